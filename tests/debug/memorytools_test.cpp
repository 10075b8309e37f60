// The Stack SRAM Space Viewer and the Alternative Registers Viewer: stack rows after nested
// calls and at the ends of the SRAM, register rows, and the list of removed registers kept in
// the settings per model.
//
// Data Memory Usage: the panels' stripes from a compile's usage table, the flash share, and
// the instruction statistics table.
//
// The Program Memory Editor and the EEPROM Memory Editor: their rows for a loaded program and
// after a run, the edits typed into them, and what a following run makes of an edit.

#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "core/stack.h"
#include "debug/alternativeregisters.h"
#include "debug/datamemoryusage.h"
#include "debug/eepromeditor.h"
#include "debug/programmemoryeditor.h"
#include "debug/stackviewer.h"
#include "disassembler/disasminstruction.h"
#include "memoryfixture.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

constexpr uint16_t kSleep = 0x9588, kRcallNext = 0xD000;

// Returns pushed low byte first (at the higher address); worked out by hand for the program
// LDI R16,$5F / OUT SPL,R16 / LDI R16,$08 / OUT SPH,R16 / RCALL +0 / RCALL +0 / SLEEP.
TEST(StackViewer, RowsAfterNestedCalls) {
    Chip chip("ATmega32");
    loadwords(chip.m, {0xE50F, 0xBF0D, 0xE008, 0xBF0E, kRcallNext, kRcallNext, kSleep});
    chip.runtosleep();
    const StackPage page = StackViewer(chip.m).page();
    EXPECT_EQ(page.label, " Stack Pointer (SPH:SPL):");
    EXPECT_EQ(page.stekpoint, "$085B");
    const std::vector<TableRow> rows = tablerows("memorytools.txt", "nestedcalls");
    ASSERT_EQ(rows.size(), page.rows.size());
    for (const TableRow& row : rows) EXPECT_EQ(page.rows[static_cast<size_t>(row.number(0))], row[1]) << row.where;
    EXPECT_EQ(page.pushrow, "$85A      $00          00000000");
}

TEST(StackViewer, EdgesOfTheSram) {
    for (const TableRow& r : tablerows("memorytools.txt", "sramedges")) {
        const int sp = static_cast<int>(r.number(2));
        Chip chip(r[1]);
        chip.m.datamem[kSplAddress] = static_cast<uint8_t>(sp & 0xFF);
        chip.m.datamem[kSphAddress] = static_cast<uint8_t>(sp >> 8);
        if (chip.m.roles.sph == 0) chip.m.datamem[kSphAddress] = 0x12;
        const StackPage page = StackViewer(chip.m).page();
        EXPECT_EQ(page.sp, sp) << r.where;
        EXPECT_EQ(page.rows[0], r[3]) << r.where;
        EXPECT_EQ(page.rows[6], r[4]) << r.where;
        EXPECT_EQ(page.pushrow, r[5]) << r.where;
    }
    Chip tiny("ATtiny2313");
    tiny.m.datamem[kSplAddress] = 0xDF;
    EXPECT_EQ(StackViewer(tiny.m).page().label, " Stack Pointer (SPL):");
    EXPECT_EQ(StackViewer(tiny.m).page().stekpoint, "$DF");
}

int tableindex(const Machine& m, const std::string& name) {
    for (size_t i = 0; i < m.namedregisters.size(); ++i)
        if (m.namedregisters[i].name == name) return static_cast<int>(i);
    ADD_FAILURE() << "no register " << name;
    return 0;
}

TEST(AlternativeRegisters, RowsInTheModelsOrder) {
    Chip chip("ATmega32");
    AlternativeRegisters list(chip.m, chip.settings);
    list.open();
    chip.m.datamem[static_cast<size_t>(registeraddress(chip.m, "PORTB"))] = 0xA5;
    const std::vector<std::string> rows = list.rows();
    ASSERT_EQ(rows.size(), chip.m.namedregisters.size());
    EXPECT_EQ(rows[static_cast<size_t>(tableindex(chip.m, "PORTB"))], "PORTB\t0xA5\t10100101");
    EXPECT_EQ(rows[static_cast<size_t>(tableindex(chip.m, "SREG"))], "SREG\t0x00\t00000000");

    // A hardware stack level: three digits and no binary field.
    Chip tiny("ATtiny12");
    hwstackpush(tiny.m, 0x1A3);
    AlternativeRegisters levels(tiny.m, tiny.settings);
    levels.open();
    const std::vector<std::string> tinyrows = levels.rows();
    ASSERT_GE(tinyrows.size(), 3u);
    EXPECT_EQ(tinyrows[tinyrows.size() - 3], "Stack Level 0\t0x1A3\t");
    EXPECT_EQ(tinyrows.back(), "Stack Level 2\t0x000\t");
}

TEST(AlternativeRegisters, RemovedRowsAreKeptPerModel) {
    Chip chip("ATmega32");
    const int count = static_cast<int>(chip.m.namedregisters.size());
    AlternativeRegisters list(chip.m, chip.settings);
    list.open();
    EXPECT_EQ(chip.settings.getsetting(kAlternativeSfrModel, "?"), "atmega32");

    // One column: a double click on line 0, then a selection from inside line 1 to inside
    // line 3 of the text as it then stands: three more rows touched.
    list.removeline(0, false, 0);
    const std::string text = list.columntext(0, false);
    const int line1 = static_cast<int>(text.find('\n')) + 1;
    const int line3 = static_cast<int>(text.find('\n', text.find('\n', line1) + 1)) + 1;
    list.removeselection(0, false, text, line1 + 2, line3 + 1);
    std::string expected(static_cast<size_t>(count), '0');
    for (size_t i : {0, 2, 3, 4}) expected[i] = '1';
    const std::string stored =
        chip.settings.getsetting(kAlternativeSfrList1, "") + chip.settings.getsetting(kAlternativeSfrList2, "");
    EXPECT_EQ(stored, expected);
    EXPECT_EQ(chip.settings.getsetting(kAlternativeSfrList1, "").size(), static_cast<size_t>(count / 2));
    EXPECT_EQ(list.rows().size(), static_cast<size_t>(count - 4));

    for (const TableRow& r : tablerows("memorytools.txt", "reopen")) {
        const std::string list1 = r[2] == "(twos)" ? std::string(static_cast<size_t>(count / 2), '2') : r[2];
        Chip again(r[1]);
        for (const char* name : {kAlternativeSfrModel, kAlternativeSfrList1, kAlternativeSfrList2})
            again.settings.putsetting(name, chip.settings.getsetting(name, ""));
        if (!list1.empty()) again.settings.putsetting(kAlternativeSfrList1, list1);
        AlternativeRegisters reopened(again.m, again.settings);
        reopened.open();
        const auto& flags = reopened.hiddenlist();
        EXPECT_EQ(std::count(flags.begin(), flags.end(), 1), r.number(3)) << r.where;
        EXPECT_EQ(flags.size(), again.m.namedregisters.size()) << r.where;
        EXPECT_EQ(again.settings.getsetting(kAlternativeSfrModel, ""), r[1] == "ATmega32" ? "atmega32" : "attiny2313")
            << r.where;
    }

    // F12 brings every row back.
    list.restore();
    EXPECT_EQ(list.rows().size(), static_cast<size_t>(count));
    EXPECT_EQ(chip.settings.getsetting(kAlternativeSfrList1, "") + chip.settings.getsetting(kAlternativeSfrList2, ""),
              std::string(static_cast<size_t>(count), '0'));
}

TEST(AlternativeRegisters, TwoColumnsSplitTheListAndScrollTogether) {
    Chip chip("ATmega32");
    AlternativeRegisters list(chip.m, chip.settings);
    list.open();
    const int count = static_cast<int>(chip.m.namedregisters.size());
    const int half = (count + 1) / 2;
    EXPECT_EQ(static_cast<int>(list.column(0, true).size()), half);
    EXPECT_EQ(static_cast<int>(list.column(1, true).size()), count - half);
    EXPECT_TRUE(list.column(1, false).empty());
    list.setpointer(2);
    EXPECT_EQ(list.column(0, true).front(), 2);
    EXPECT_EQ(list.column(1, true).front(), half + 2);
    // A double click in the second column removes the row it shows.
    list.removeline(1, true, 0);
    EXPECT_EQ(list.hiddenlist()[static_cast<size_t>(half + 2)], 1);
    EXPECT_EQ(list.pointermax(false, 10), count - 1 - 10);
}

constexpr uint32_t kBlack = 0xFF000000u, kRed = 0xFFFF8080u, kGreen = 0xFF80FF80u, kBlue = 0xFF8080FFu,
                   kPink = 0xFFFF80FFu;

CompiledUsage usage(int sramsize) {
    CompiledUsage u;
    u.sramfirst = 96;
    u.sramsize = sramsize;
    u.memoryusage.assign(static_cast<size_t>(96 + sramsize), 2);
    for (int a = 32; a < 96; ++a) u.memoryusage[static_cast<size_t>(a)] = a == 95 ? 1 : 0;
    u.memoryusage[16] = 3;
    u.memoryusage[17] = 4;
    if (sramsize > 0) u.memoryusage[96] = 4;
    return u;
}

const UsageStripe* stripeat(const std::vector<UsageStripe>& stripes, int address) {
    for (const UsageStripe& s : stripes)
        if (s.address == address) return &s;
    return nullptr;
}

TEST(DataMemoryUsage, StripesOfEachPanel) {
    const std::map<std::string, uint32_t> colours = {
        {"black", kBlack}, {"red", kRed}, {"green", kGreen}, {"blue", kBlue}, {"pink", kPink}};
    for (const TableRow& r : tablerows("memorytools.txt", "stripes")) {
        const DataMemoryUsage view(usage(static_cast<int>(r.number(1))));
        const std::vector<UsageStripe> stripes =
            r[2] == "gpwr" ? view.gpwrpanel() : r[2] == "io" ? view.iopanel() : view.srampanel();
        EXPECT_EQ(stripes.size(), static_cast<size_t>(r.number(3))) << r.where;
        const UsageStripe* s = stripeat(stripes, static_cast<int>(r.number(4)));
        ASSERT_TRUE(s) << r.where;
        EXPECT_DOUBLE_EQ(s->x, std::stod(r[5])) << r.where;
        EXPECT_DOUBLE_EQ(s->width, std::stod(r[6])) << r.where;
        EXPECT_EQ(s->colour, colours.at(r[7])) << r.where;
    }
    const DataMemoryUsage large(usage(2048));
    // On a shared pixel the variable is drawn after the free cells around it.
    const std::vector<UsageStripe> sram = large.srampanel();
    EXPECT_EQ(sram.back().address, 96);
    EXPECT_EQ(DataMemoryUsage::gpwrmarks(), (std::vector<int>{64, 128, 192}));
    EXPECT_TRUE(DataMemoryUsage(usage(0)).srampanel().empty());
}

TEST(DataMemoryUsage, FlashShare) {
    for (const TableRow& r : tablerows("memorytools.txt", "flashshare")) {
        CompiledUsage u;
        u.outputwords = static_cast<int>(r.number(0));
        u.flashbytes = static_cast<int>(r.number(1));
        EXPECT_EQ(DataMemoryUsage(u).flashlabel(), r[2]) << r.where;
    }
}

TEST(DataMemoryUsage, StatisticsTableOfThreeColumns) {
    CompiledUsage u;
    for (int i = 0; i < 114; ++i) u.statistics.push_back({"M" + std::to_string(i), i % 3});
    u.totalinstructions = 114;
    const DataMemoryUsage view(u);
    const std::string table = view.statisticstable();
    const size_t firstline = table.find('\n');
    EXPECT_EQ(table.substr(0, firstline), "M0\t0\t\tM38\t2\t\tM76\t1");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 39);
    EXPECT_TRUE(table.ends_with("\nM37\t1\t\tM75\t0\t\tM113\t2\n\nTotal: 114 instructions."));
    EXPECT_EQ(view.statisticsmessage(), table + "\n\n(The table has been copied to Clipboard.)");
}

constexpr uint16_t kCall = 0x940E;

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
    for (const TableRow& r : tablerows("memorytools.txt", "programrows")) {
        const auto word = [&r](size_t i) { return static_cast<uint16_t>(r.number(i)); };
        const std::string expected = r[4].empty() ? r[3] : r[3] + "  " + text(word(4), word(5));
        editor.setscroll(static_cast<int>(r.number(1)));
        EXPECT_EQ(editor.rows()[static_cast<size_t>(r.number(2))].text, expected) << r.where;
    }
    EXPECT_EQ(text(0xE50F, kCall), "LDI R16,$5F");
    EXPECT_EQ(editor.scrollmax(), 16384 - 16);
    editor.setscroll(0);
    EXPECT_EQ(editor.prompt(2), "Enter new instruction opcode [0000-FFFF]\nfor the program memory location $000002.");
}

TEST(ProgramMemoryEditor, TypedOpcodes) {
    for (const TableRow& r : tablerows("memorytools.txt", "opcodes")) {
        const bool kept = r[1] != "dropped";
        const std::optional<std::string> answer = r[0] == "(cancel)" ? std::nullopt : std::optional(r[0]);
        Chip chip("ATmega32");
        putword(chip.m, 7, 0x5555);
        const int programbytes = chip.m.programbytes;
        ProgramMemoryEditor editor(chip.m);
        editor.setscroll(7);
        EXPECT_EQ(editor.editrow(0, answer), kept) << r.where;
        EXPECT_EQ(progword(chip.m, 7), kept ? r.number(1) : 0x5555) << r.where;
        EXPECT_EQ(chip.m.programbytes, programbytes) << r.where;
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
    for (const TableRow& r : tablerows("memorytools.txt", "eeprompages")) {
        editor.setscroll(static_cast<int>(r.number(0)));
        const EepromPage page = editor.page();
        EXPECT_EQ(page.labels[static_cast<size_t>(r.number(1))], r[2]) << r.where;
        EXPECT_EQ(page.bytes[static_cast<size_t>(r.number(1))], r[3]) << r.where;
    }

    // The program reads the cell it prints as "erased" before writing it: an edit reaches it.
    editor.setscroll(1);
    ASSERT_TRUE(editor.entercell(*editor.celladdress(0, 0), "0"));
    chip.runtosleep();
    EXPECT_EQ(chip.output().substr(0, 10), "erased 00\n");
}

TEST(EepromEditor, TypedBytesAndTheSmallEeprom) {
    Chip chip("ATtiny12");
    EepromEditor editor(chip.m);
    for (const TableRow& r : tablerows("memorytools.txt", "eeprombytes")) {
        const bool stored = r[1] != "refused";
        chip.m.eeprommem[0x3F] = 0x99;
        EXPECT_EQ(editor.entercell(0x3F, r[0]), stored) << r.where;
        EXPECT_EQ(chip.m.eeprommem[0x3F], stored ? r.number(1) : 0x99) << r.where;
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
