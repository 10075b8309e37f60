#include "debug/programmemoryeditor.h"

#include <algorithm>

#include "core/hextext.h"
#include "debug/memorytext.h"
#include "disassembler/disasminstruction.h"

namespace velmora {

namespace {
std::string wordfields(int address, uint16_t word) {
    return dollarhex(static_cast<uint32_t>(address), 6) + "  " + dollarhex(word, 4) + "   " + binarydigits(word, 16);
}
}  // namespace

void ProgramMemoryEditor::setscroll(int first) { scroll_ = std::clamp(first, 0, scrollmax()); }

int ProgramMemoryEditor::scrollmax() const { return std::max(0, m_.flashwords - kProgramMemoryRows); }

std::array<ProgramMemoryRow, kProgramMemoryRows> ProgramMemoryEditor::rows() const {
    std::array<ProgramMemoryRow, kProgramMemoryRows> rows{};
    Disassembler disassembler(m_.bitnames);
    int address = std::min(scroll_, scrollmax());
    for (int row = 0; row < kProgramMemoryRows && address < m_.flashwords; ++row) {
        // Program memory carries spare bytes behind the last word, so the next word is always there.
        const uint16_t word = progword(m_, address);
        const std::string text = disassembler.disasminstruction(word, progword(m_, address + 1));
        rows[row] = {wordfields(address, word) + "  " + text.substr(0, kInstructionTextWidth), address};
        ++address;
        if (disassembler.secondword() && row + 1 < kProgramMemoryRows && address < m_.flashwords) {
            ++row;
            rows[row] = {wordfields(address, progword(m_, address)), address};
            ++address;
        }
    }
    return rows;
}

std::string ProgramMemoryEditor::prompt(int row) const {
    if (row < 0 || row >= kProgramMemoryRows) return "";
    const ProgramMemoryRow shown = rows()[static_cast<size_t>(row)];
    if (shown.address < 0) return "";
    return "Enter new instruction opcode [0000-FFFF]\nfor the program memory location " +
           dollarhex(static_cast<uint32_t>(shown.address), 6) + ".";
}

bool ProgramMemoryEditor::editrow(int row, const std::optional<std::string>& answer) {
    if (row < 0 || row >= kProgramMemoryRows) return false;
    return editword(rows()[static_cast<size_t>(row)].address, answer);
}

bool ProgramMemoryEditor::editword(int address, const std::optional<std::string>& answer) {
    // An empty answer is the prompt's Cancel: it must not write a NOP.
    if (address < 0 || address >= m_.flashwords || !answer || answer->empty()) return false;
    const std::optional<uint32_t> word = paddedhex(*answer, 4);
    if (!word) return false;
    // No decoded form of program memory is kept beside it: the next fetch reads these bytes.
    m_.progmem[static_cast<size_t>(address) * 2] = static_cast<uint8_t>(*word & 0xFF);
    m_.progmem[static_cast<size_t>(address) * 2 + 1] = static_cast<uint8_t>(*word >> 8);
    return true;
}

}  // namespace velmora
