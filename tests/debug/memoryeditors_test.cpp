// The Program Memory Editor and the EEPROM Memory Editor: their rows for a loaded program and
// after a run, the edits typed into them, and what a following run makes of an edit.

#include <gtest/gtest.h>

#include <optional>

#include "debug/eepromeditor.h"
#include "debug/programmemoryeditor.h"
#include "disassembler/disasminstruction.h"
#include "memoryfixture.h"

namespace velmora::test {
namespace {

constexpr uint16_t kCall = 0x940E, kSleep = 0x9588;

void putword(Machine& m, int address, uint16_t word) {
    m.progmem[static_cast<size_t>(address) * 2] = static_cast<uint8_t>(word & 0xFF);
    m.progmem[static_cast<size_t>(address) * 2 + 1] = static_cast<uint8_t>(word >> 8);
}

TEST(ProgramMemoryEditor, RowsShowWordBinaryAndTheDisassemblersText) {
    Chip chip("ATmega32");
    Machine& m = chip.m;
    loadwords(m, {0xE50F, kCall, 0x0034, 0x0000, kSleep});
    putword(m, 0x2F, kCall);  // the last row of the page from 0x20
    putword(m, 0x30, 0x0100);
    Disassembler dis(m.bitnames);
    const auto text = [&dis](uint16_t word, uint16_t next) { return dis.disasminstruction(word, next).substr(0, 20); };
    ProgramMemoryEditor editor(m);
    const struct {
        const char* name;
        int scroll, row;
        std::string expected;
    } rows[] = {
        {"LDI", 0, 0, "$000000  $E50F   1110010100001111  " + text(0xE50F, kCall)},
        {"CALL takes its operand", 0, 1, "$000001  $940E   1001010000001110  " + text(kCall, 0x0034)},
        {"the operand row has no instruction", 0, 2, "$000002  $0034   0000000000110100"},
        {"the walk goes on behind it", 0, 3, "$000003  $0000   0000000000000000  NOP"},
        {"SLEEP", 0, 4, "$000004  $9588   1001010110001000  " + text(kSleep, 0xFFFF)},
        {"an erased word", 0, 5, "$000005  $FFFF   1111111111111111  " + text(0xFFFF, 0xFFFF)},
        {"a page ending at a CALL shows no operand row", 0x20, 15,
         "$00002F  $940E   1001010000001110  " + text(kCall, 0x0100)},
        {"one row earlier the operand fits", 0x21, 15, "$000030  $0100   0000000100000000"},
        {"last page", 0x3FFF, 15, "$003FFF  $FFFF   1111111111111111  " + text(0xFFFF, 0xFFFF)},
    };
    for (const auto& r : rows) {
        editor.setscroll(r.scroll);
        EXPECT_EQ(editor.rows()[static_cast<size_t>(r.row)].text, r.expected) << r.name;
    }
    EXPECT_EQ(text(0xE50F, kCall), "LDI R16,$5F");
    EXPECT_EQ(editor.scrollmax(), 16384 - 16);
    editor.setscroll(0);
    EXPECT_EQ(editor.prompt(2), "Enter new instruction opcode [0000-FFFF]\nfor the program memory location $000002.");
}

TEST(ProgramMemoryEditor, TypedOpcodes) {
    const struct {
        std::optional<std::string> answer;
        int expected;  // -1: dropped
    } rows[] = {
        {"12", 0x0012}, {"abcd", 0xABCD}, {"FFFF", 0xFFFF}, {"0", 0x0000}, {"10000", -1},
        {"G1", -1},     {"-1", -1},       {" 12", -1},      {"", -1},      {std::nullopt, -1},
    };
    for (const auto& r : rows) {
        Chip chip("ATmega32");
        putword(chip.m, 7, 0x5555);
        const int programbytes = chip.m.programbytes;
        ProgramMemoryEditor editor(chip.m);
        editor.setscroll(7);
        const std::string shown = r.answer.value_or("(cancel)");
        EXPECT_EQ(editor.editrow(0, r.answer), r.expected >= 0) << shown;
        EXPECT_EQ(progword(chip.m, 7), r.expected >= 0 ? r.expected : 0x5555) << shown;
        EXPECT_EQ(chip.m.programbytes, programbytes) << shown;
    }
}

TEST(ProgramMemoryEditor, AnEditChangesTheNextRun) {
    Chip chip("ATmega32");
    loadwords(chip.m, {0xE001, kSleep});  // LDI R16,1
    chip.runtosleep();
    EXPECT_EQ(chip.m.datamem[16], 1);
    ProgramMemoryEditor editor(chip.m);
    ASSERT_TRUE(editor.editword(0, std::string("E02A")));  // LDI R18,10
    chip.runtosleep();
    EXPECT_EQ(chip.m.datamem[16], 0);
    EXPECT_EQ(chip.m.datamem[18], 10);
}

// avr-gcc firmware whose printed lines say what it wrote (tests/firmware/expected).
TEST(EepromEditor, RowsAfterAProgramWroteTheEeprom) {
    Chip chip("ATmega32");
    chip.loadhex(firmware("eeprom-atmega32.hex"));
    chip.runtosleep();
    ASSERT_NE(chip.output().find("050: EF BE AD DE"), std::string::npos);
    EepromEditor editor(chip.m);
    ASSERT_TRUE(editor.scrollable());
    const std::string erased = "FF FF FF FF FF FF FF FF";
    const struct {
        int scroll, row;
        std::string label, bytes;
    } rows[] = {
        {1, 0, "$010", "5A FF FF FF FF FF FF FF " + erased},
        {1, 1, "$020", "01 26 4B 70 95 BA DF 04 " + erased},
        {1, 2, "$030", erased + " " + erased},
        {1, 3, "$040", "56 65 6C 6D 6F 41 61 3F " + erased},
        {1, 4, "$050", "EF BE AD DE FF FF FF FF " + erased},
        {56, 7, "$3F0", erased + " FF FF FF FF C0 C1 C2 C3"},
        {99, 0, "$380", erased + " " + erased},  // held at the last page
    };
    for (const auto& r : rows) {
        editor.setscroll(r.scroll);
        const EepromPage page = editor.page();
        EXPECT_EQ(page.labels[static_cast<size_t>(r.row)], r.label) << r.label;
        EXPECT_EQ(page.bytes[static_cast<size_t>(r.row)], r.bytes) << r.label;
    }

    // The program reads the cell it prints as "erased" before writing it: an edit reaches it.
    editor.setscroll(1);
    ASSERT_TRUE(editor.entercell(*editor.celladdress(0, 0), "0"));
    chip.runtosleep();
    EXPECT_EQ(chip.output().substr(0, 10), "erased 00\n");
}

TEST(EepromEditor, TypedBytesAndTheSmallEeprom) {
    const struct {
        std::string text;
        int expected;  // -1: not stored, the box stays
    } rows[] = {{"", 0x00}, {"5", 0x05}, {"a", 0x0A}, {"7f", 0x7F}, {"G", -1}, {"123", -1}, {" 1", -1}, {"-", -1}};
    Chip chip("ATtiny12");
    EepromEditor editor(chip.m);
    for (const auto& r : rows) {
        chip.m.eeprommem[0x3F] = 0x99;
        EXPECT_EQ(editor.entercell(0x3F, r.text), r.expected >= 0) << r.text;
        EXPECT_EQ(chip.m.eeprommem[0x3F], r.expected >= 0 ? r.expected : 0x99) << r.text;
    }
    // 64 bytes: four rows, no scroll bar, the other rows empty and not clickable.
    EXPECT_FALSE(editor.scrollable());
    const EepromPage page = editor.page();
    EXPECT_EQ(page.labels[3], "$030");
    EXPECT_EQ(page.bytes[3].substr(45), "99");
    EXPECT_EQ(page.labels[4], "");
    EXPECT_EQ(page.bytes[4], "");
    EXPECT_EQ(editor.celladdress(3, 15), 0x3F);
    EXPECT_FALSE(editor.celladdress(4, 0));
    editor.erase(0x00);
    EXPECT_EQ(editor.page().bytes[0], "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
}

}  // namespace
}  // namespace velmora::test
