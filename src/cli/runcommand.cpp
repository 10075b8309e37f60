#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <fstream>
#include <iostream>
#include <sstream>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/session.h"
#include "core/hextext.h"
#include "core/instructiontext.h"
#include "core/runcontrol.h"
#include "core/stack.h"

namespace velmora {

namespace {

void dumpstate(const Machine& m, std::ostream& out) {
    for (int r = 0; r < 32; ++r) {
        out << "R" << r << (r < 10 ? " " : "") << " = $" << hex2(m.datamem[r]) << ((r % 8 == 7) ? "\n" : "  ");
    }
    out << "SREG = $" << hex2(m.datamem[kSregAddress]) << "\n";
    out << "SP = $" << hex4(static_cast<uint32_t>(stackpointer(m))) << "\n";
    out << "PC = $" << hex6(static_cast<uint32_t>(m.pc)) << "\n";
    for (const NamedRegister& r : m.namedregisters) {
        if (r.address >= kHwStackPseudoAddress) {
            const int level = r.address - kHwStackPseudoAddress;
            out << r.text << " = $" << hex4(static_cast<uint32_t>(m.hwstack[level])) << "\n";
        } else if (r.address < m.dataspacesize) {
            out << r.text << " = $" << hex2(m.datamem[r.address]) << "\n";
        }
    }
    if (!m.eeprommem.empty()) {
        out << "EEPROM:\n";
        bool anyrow = false;
        for (size_t a = 0; a < m.eeprommem.size(); a += 16) {
            bool erased = true;
            for (size_t i = a; i < a + 16 && i < m.eeprommem.size(); ++i) erased = erased && m.eeprommem[i] == 0xFF;
            if (erased) continue;  // only rows that hold data
            anyrow = true;
            out << hex4(static_cast<uint32_t>(a)) << ":";
            for (size_t i = a; i < a + 16 && i < m.eeprommem.size(); ++i) out << " " << hex2(m.eeprommem[i]);
            out << "\n";
        }
        if (!anyrow) out << "(all $FF)\n";
    }
}

uint64_t parsecount(const std::string& text) {
    char* end = nullptr;
    const unsigned long long v = std::strtoull(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || text[0] == '-') throw std::invalid_argument("'" + text + "' is not a count");
    return v;
}

// Word addresses as the listings show them: hexadecimal, with or without "$" or "0x".
uint32_t parsehexaddress(std::string text) {
    if (!text.empty() && text[0] == '$') text.erase(0, 1);
    char* end = nullptr;
    const unsigned long v = std::strtoul(text.c_str(), &end, 16);
    if (text.empty() || *end != '\0' || v > 0x3FFFFF) throw std::invalid_argument("'" + text + "' is not a word address");
    return static_cast<uint32_t>(v);
}

int exitcode(const Machine& m, bool limitreached, bool breakpointhit) {
    if (limitreached) return kExitLimit;
    if (breakpointhit) return kExitBreakpoint;
    switch (m.stopreason) {
    case Machine::StopReason::Sleep: return kExitSleep;
    case Machine::StopReason::Unrecognized: return kExitUnrecognized;
    case Machine::StopReason::EndOfMemory: return kExitEndOfMemory;
    case Machine::StopReason::InfiniteLoop: return kExitInfiniteLoop;
    default: return kExitStepByStep;
    }
}

}  // namespace

int runcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(
        args, {"--model", "--clock", "--max-cycles", "--max-instructions", "--break"},
        {"--dump", "--infinite-loop-stop"});
    if (!parsed.error.empty() || parsed.positional.size() != 1) {
        err << "usage: velmora-cli run [--model NAME] [--clock MHZ] [--max-cycles N] [--max-instructions N]\n"
               "                       [--break ADDRESS]... [--infinite-loop-stop] [--dump] FILE\n";
        if (!parsed.error.empty()) err << parsed.error << "\n";
        return kExitUsage;
    }
    CliSession session(err);
    if (!session.selectmodel(parsed.value("--model"))) return kExitInputError;
    if (auto clock = parsed.value("--clock")) {
        if (!session.setclock(*clock)) return kExitUsage;
    }
    if (!session.loadprogram(parsed.positional[0])) return kExitInputError;
    Machine& m = session.machine();
    m.infiniteloopstop = parsed.has("--infinite-loop-stop");

    uint64_t maxcycles = 0, maxinstructions = 0;
    std::vector<int32_t> breakpoints;
    try {
        if (auto v = parsed.value("--max-cycles")) maxcycles = parsecount(*v);
        if (auto v = parsed.value("--max-instructions")) maxinstructions = parsecount(*v);
        if (parsed.options.count("--break"))
            for (const std::string& b : parsed.options.at("--break"))
                breakpoints.push_back(static_cast<int32_t>(parsehexaddress(b)));
    } catch (const std::invalid_argument& e) {
        err << "velmora-cli: " << e.what() << "\n";
        return kExitUsage;
    }

    bool limitreached = false, breakpointhit = false;
    RunControl& run = session.runcontrol();
    if (maxcycles || maxinstructions || !breakpoints.empty()) {
        run.addhook(HookSlot::Breakpoints, 0, [&](RunControl& rc) {
            const Machine& mm = rc.machine();
            if ((maxcycles && mm.totalcycles >= maxcycles) || (maxinstructions && mm.totalinstructions >= maxinstructions)) {
                limitreached = true;
                rc.menuspeed(kRateStep);
                return;
            }
            for (int32_t b : breakpoints)
                if (mm.pc == b) {
                    breakpointhit = true;
                    rc.menuspeed(kRateStep);
                    return;
                }
        });
    }
    run.menuspeed(kRateUltimate);
    run.menustart();
    if (m.simulationrunning) {
        // Ended by a limit, a breakpoint, BREAK or a fault: stop as the Stop command does.
        m.stoprequest = true;
        run.menustop();
    }
    if (parsed.has("--dump")) dumpstate(m, out);
    return exitcode(m, limitreached, breakpointhit);
}

}  // namespace velmora
