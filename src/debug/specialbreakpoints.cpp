#include "debug/specialbreakpoints.h"

#include "core/hextext.h"
#include "debug/memorytext.h"

namespace velmora {

SpecialBreakpoints::SpecialBreakpoints(RunControl& run, Questions& questions, Messenger& messenger)
    : run_(run), questions_(questions), messenger_(messenger) {}

SpecialBreakpoints::~SpecialBreakpoints() {
    if (hookid_) run_.removehook(hookid_);
}

void SpecialBreakpoints::set(int n) {
    if (n < 0 || n >= kSpecialBreakpoints) return;
    const Machine& m = run_.machine();
    const std::optional<std::string> address = questions_.inputbox("Enter register address (HEX):", "");
    if (!address || address->empty()) return;
    const std::optional<uint32_t> location = paddedhex(*address, 4);
    if (!location || *location >= static_cast<uint32_t>(m.dataspacesize)) {
        messenger_.show("Address out of range.", MessageKind::Exclamation);
        return;
    }
    const std::optional<std::string> kind =
        questions_.inputbox("Enter special breakpoint type:\n1 - Value Equal\n2 - Value Change", "");
    if (!kind || kind->empty()) return;
    if (*kind != "1" && *kind != "2") {
        messenger_.show("Wrong entry.", MessageKind::Exclamation);
        return;
    }
    SpecialBreakpoint entry{SpecialKind::ValueChange, static_cast<int32_t>(*location),
                            m.datamem[static_cast<size_t>(*location)]};
    if (*kind == "1") {
        const std::optional<std::string> target = questions_.inputbox("Enter target register value (HEX):", "");
        if (!target || target->empty()) return;
        const std::optional<uint32_t> value = paddedhex(*target, 4);
        if (!value || *value > 255) {
            messenger_.show("Value out of range.", MessageKind::Exclamation);
            return;
        }
        entry = {SpecialKind::ValueEqual, static_cast<int32_t>(*location), static_cast<int32_t>(*value)};
    }
    entries_[static_cast<size_t>(n)] = entry;
    hook();
}

void SpecialBreakpoints::remove(int n) {
    if (n < 0 || n >= kSpecialBreakpoints) return;
    entries_[static_cast<size_t>(n)].kind = SpecialKind::Empty;
    hook();
}

void SpecialBreakpoints::clear() {
    for (SpecialBreakpoint& entry : entries_) entry.kind = SpecialKind::Empty;
    hook();
}

std::string SpecialBreakpoints::addresslabel(int n) const {
    const SpecialBreakpoint& entry = entries_.at(static_cast<size_t>(n));
    if (entry.kind == SpecialKind::Empty) return "";
    return dollarhex(static_cast<uint32_t>(entry.address), entry.address >= 4096 ? 4 : 3);
}

std::string SpecialBreakpoints::conditionlabel(int n) const {
    const SpecialBreakpoint& entry = entries_.at(static_cast<size_t>(n));
    if (entry.kind == SpecialKind::Empty) return "";
    if (entry.kind == SpecialKind::ValueChange) return "Value Change";
    return "Value = " + cprefixhex(static_cast<uint32_t>(entry.value), 2);
}

void SpecialBreakpoints::check() {
    const Machine& m = run_.machine();
    for (SpecialBreakpoint& entry : entries_) {
        if (entry.kind == SpecialKind::Empty || static_cast<size_t>(entry.address) >= m.datamem.size()) continue;
        const int32_t present = m.datamem[static_cast<size_t>(entry.address)];
        if (entry.kind == SpecialKind::ValueEqual) {
            if (present != entry.value) continue;
            run_.menuspeed(kRateStep);
            return;
        }
        // The first two instructions of a run may set up what is watched without stopping it.
        const bool changed = present != entry.value && m.totalinstructions > 2;
        entry.value = present;
        if (changed) {
            run_.menuspeed(kRateStep);
            return;
        }
    }
}

void SpecialBreakpoints::hook() {
    bool any = false;
    for (const SpecialBreakpoint& entry : entries_) any = any || entry.kind != SpecialKind::Empty;
    if (any && !hookid_) hookid_ = run_.addhook(HookSlot::SpecialBreakpoints, 0, [this](RunControl&) { check(); });
    if (!any && hookid_) {
        run_.removehook(hookid_);
        hookid_ = 0;
    }
}

}  // namespace velmora
