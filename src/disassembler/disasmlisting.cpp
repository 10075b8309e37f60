#include "disassembler/disasmlisting.h"

#include <algorithm>

#include "core/hextext.h"
#include "core/machine.h"
#include "disassembler/disasmlabels.h"

namespace velmora {

namespace {
const char* const kRule = "-----------------------------------";
const char* const kRowEnd = "\r\n";

// Program word at a word address; past the end of program memory it reads as erased.
uint16_t wordat(const Machine& m, int wordaddress) {
    const size_t i = static_cast<size_t>(wordaddress) * 2;
    if (i + 1 >= m.progmem.size()) return static_cast<uint16_t>(m.unprogrammed * 0x101);
    return progword(m, wordaddress);
}

// Words of the loaded program, never more than program memory holds.
int programwords(const Machine& m) {
    const int64_t memory = std::min<int64_t>(std::max(m.flashsize, 0), static_cast<int64_t>(m.progmem.size()));
    return static_cast<int>(std::clamp<int64_t>(m.programbytes, 0, memory) / 2);
}

std::string header(ListingLayout layout) {
    std::string text;
    if (layout == ListingLayout::WithoutOpcodes) {
        for (const char* row : {kRule, "AVR DISASSEMBLER LISTING", "Label  Instruction", kRule})
            text += std::string(";") + row + kRowEnd;
    } else {
        for (const char* row : {kRule, "AVR DISASSEMBLER LISTING", "Address Opcode  Instruction", kRule})
            text += std::string(row) + kRowEnd;
    }
    return text;
}

std::string addressandword(int wordaddress, uint16_t word) { return hex6(wordaddress) + "  " + hex4(word); }

class ListingRun {
public:
    ListingRun(const Machine& m, ListingLayout layout, bool withoutopcodes, const ListingProgress& progress,
               const ProgramNames& names = {})
        : m_(m), layout_(layout), withoutopcodes_(withoutopcodes), progress_(progress),
          words_(programwords(m)), disassembler_(m.bitnames), labels_(words_) {
        disasmnamewords(labels_, names);
    }

    std::string run() {
        std::string text = header(layout_);
        if (layout_ != ListingLayout::Plain) scanlabels();
        for (int i = 0; i < words_; ++i) {
            report(layout_ == ListingLayout::Plain ? 1 : 2, i);
            const uint16_t word = wordat(m_, i), next = wordat(m_, i + 1);
            std::string instruction = disasmword(disassembler_, word, next, withoutopcodes_);
            if (layout_ != ListingLayout::Plain) disasmlabelscan(labels_, i, word, next, instruction);
            text += row(i, word, instruction);
            // The operand word of a two-word instruction has no text; the layouts with
            // addresses still show it, as long as it lies inside the program.
            if (disassembler_.secondword() && ++i < words_ && layout_ != ListingLayout::WithoutOpcodes)
                text += addressandword(i, next) + kRowEnd;
        }
        return text;
    }

private:
    // Pass 1: every target inside the program gets its label before any row is written.
    void scanlabels() {
        for (int i = 0; i < words_; ++i) {
            report(1, i);
            const uint16_t word = wordat(m_, i), next = wordat(m_, i + 1);
            std::string instruction = disassembler_.disasminstruction(word, next);
            disasmlabelscan(labels_, i, word, next, instruction);
            if (disassembler_.secondword()) ++i;
        }
    }

    std::string row(int i, uint16_t word, const std::string& instruction) const {
        const std::string& label = labels_.at(i);
        const std::string labelcolumn = label.empty() ? "" : label + ":";
        switch (layout_) {
        case ListingLayout::Normal:
            return addressandword(i, word) + "    " + labelcolumn + "\t" + instruction + kRowEnd;
        case ListingLayout::WithoutOpcodes: return labelcolumn + "\t" + instruction + kRowEnd;
        case ListingLayout::Plain: break;
        }
        return addressandword(i, word) + "    " + instruction + kRowEnd;
    }

    void report(int pass, int i) const {
        if (progress_) progress_(pass, i);
    }

    const Machine& m_;
    const ListingLayout layout_;
    const bool withoutopcodes_;
    const ListingProgress& progress_;
    const int words_;
    Disassembler disassembler_;
    DisasmLabels labels_;
};
}  // namespace

std::string disasmword(Disassembler& disassembler, uint16_t word, uint16_t nextword, bool withoutopcodes) {
    std::string text = disassembler.disasminstruction(word, nextword);
    // Keeps a listing meant for the assembler assemblable.
    if (withoutopcodes && text == "UNRECOGNIZED") text = ".DW " + dollarhex(word, 4) + " ;UNRECOGNIZED";
    return text;
}

std::string disasmlisting(const Machine& m, bool plain, bool withoutopcodes, const ListingProgress& progress) {
    const ListingLayout layout =
        plain ? ListingLayout::Plain : (withoutopcodes ? ListingLayout::WithoutOpcodes : ListingLayout::Normal);
    return ListingRun(m, layout, withoutopcodes, progress).run();
}

std::string disasmfile(const Machine& m, ListingLayout layout, const ProgramNames& names) {
    return ListingRun(m, layout, layout == ListingLayout::WithoutOpcodes, {}, names).run();
}

std::string progresspasstext(int pass) { return "Performing pass " + std::to_string(pass) + "."; }

std::string progresslinetext(int wordindex) { return "Line " + std::to_string(wordindex + 1); }

}  // namespace velmora
