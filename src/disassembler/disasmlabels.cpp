#include "disassembler/disasmlabels.h"

#include <optional>

#include "core/decode.h"
#include "core/instructiontext.h"

namespace velmora {

namespace {
// Word address the instruction goes to, for the instructions that have one.
std::optional<int64_t> targetof(Op id, int disasmindex, uint16_t word, uint16_t nextword) {
    switch (id) {
    case Op::BranchClear: case Op::BranchSet: return int64_t{disasmindex} + 1 + branchoffset(word);
    case Op::Rjmp: case Op::Rcall: return int64_t{disasmindex} + 1 + relativeoffset(word);
    case Op::Jmp: case Op::Call: return int64_t{absoluteaddress(word, nextword)};
    default: return std::nullopt;
    }
}

std::string targetmnemonic(Op id, uint16_t word) {
    if (id == Op::BranchClear || id == Op::BranchSet) return branchmnemonic(id == Op::BranchSet, word & 7);
    return mnemonic(id);
}
}  // namespace

const std::string& DisasmLabels::at(int wordaddress) const {
    static const std::string none;
    if (wordaddress < 0 || wordaddress >= static_cast<int>(disasmlabels.size())) return none;
    return disasmlabels[wordaddress];
}

void disasmnamewords(DisasmLabels& labels, const ProgramNames& names) {
    for (const auto& [word, name] : names)
        if (word >= 0 && word < static_cast<int32_t>(labels.disasmlabels.size()) && labels.disasmlabels[word].empty())
            labels.disasmlabels[word] = name;
}

void disasmlabelscan(DisasmLabels& labels, int disasmindex, uint16_t word, uint16_t nextword,
                     std::string& disasmtext) {
    const Op id = decode(word);
    const std::optional<int64_t> target = targetof(id, disasmindex, word, nextword);
    if (!target || *target < 0 || *target >= static_cast<int64_t>(labels.disasmlabels.size())) return;
    std::string& name = labels.disasmlabels[static_cast<size_t>(*target)];
    if (name.empty()) name = "L" + std::to_string(++labels.labelcount);
    // The named branches cover every SREG bit, so no BRBC/BRBS form with a bit number reaches here.
    disasmtext = targetmnemonic(id, word) + " " + name;
}

}  // namespace velmora
