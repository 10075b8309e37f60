#pragma once
// Label invention for the listing: branch, jump and call targets inside the program
// get names "L1", "L2", ... in the order in which the scan first meets them, unless the
// program named them itself.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

struct DisasmLabels {
    explicit DisasmLabels(int programwords) : disasmlabels(programwords > 0 ? programwords : 0) {}

    // Name of the label at each program word, or empty.
    std::vector<std::string> disasmlabels;
    // Number of the last label made.
    int labelcount = 0;

    // The label at a word address; empty outside the program.
    const std::string& at(int wordaddress) const;
};

// Names a program brings (an ELF file's functions): word address and name.
using ProgramNames = std::vector<std::pair<int32_t, std::string>>;

// Gives the words of `names` that lie inside the program their names, before any scan
// invents one; the scan then uses them for the branches that reach those words.
void disasmnamewords(DisasmLabels& labels, const ProgramNames& names);

// For a conditional branch, RJMP, RCALL, JMP or CALL at `disasmindex` whose target lies
// inside the program: names the target (a new label when it has none yet) and replaces
// `disasmtext` with the mnemonic, a blank and the label. Any other word, or a target
// outside the program, leaves the numeric text as it is.
void disasmlabelscan(DisasmLabels& labels, int disasmindex, uint16_t word, uint16_t nextword,
                     std::string& disasmtext);

}  // namespace velmora
