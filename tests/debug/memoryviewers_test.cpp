// The Stack SRAM Space Viewer and the Alternative Registers Viewer: stack rows after nested
// calls and at the ends of the SRAM, register rows, and the list of removed registers kept in
// the settings per model.

#include <gtest/gtest.h>

#include "core/stack.h"
#include "debug/alternativeregisters.h"
#include "debug/stackviewer.h"
#include "memoryfixture.h"

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
    const std::array<std::string, kStackRows> rows = {
        "",  // $861 and $860 lie above the SRAM
        "",
        "$85F      $05          00000101",  // return to word 5, low byte
        "$85E      $00          00000000",
        "$85D      $06          00000110",  // return to word 6
        "$85C      $00          00000000",
        "$85B      $00          00000000",  // SP
    };
    for (size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(page.rows[i], rows[i]) << "row " << i;
    EXPECT_EQ(page.pushrow, "$85A      $00          00000000");
}

TEST(StackViewer, EdgesOfTheSram) {
    const struct {
        const char* name;
        const char* model;
        int sp;
        std::string top, bottom, push;  // rows SP + 6 and SP, and SP - 1
    } rows[] = {
        {"SP at the lowest SRAM cell: nothing below it", "ATmega32", 0x060, "$066      $00          00000000",
         "$060      $00          00000000", ""},
        {"SP at RAMEND: nothing above it", "ATmega32", 0x85F, "", "$85F      $00          00000000",
         "$85E      $00          00000000"},
        {"SP among the registers", "ATmega32", 0x010, "", "", ""},
        {"more than 4097 cells: four digits", "ATmega128", 0x10FF, "", "$10FF     $00          00000000",
         "$10FE     $00          00000000"},
        {"no SPH: its cell does not count", "ATtiny2313", 0x0DF, "", "$0DF      $00          00000000",
         "$0DE      $00          00000000"},
    };
    for (const auto& r : rows) {
        Chip chip(r.model);
        chip.m.datamem[kSplAddress] = static_cast<uint8_t>(r.sp & 0xFF);
        chip.m.datamem[kSphAddress] = static_cast<uint8_t>(r.sp >> 8);
        if (chip.m.roles.sph == 0) chip.m.datamem[kSphAddress] = 0x12;
        const StackPage page = StackViewer(chip.m).page();
        EXPECT_EQ(page.sp, r.sp) << r.name;
        EXPECT_EQ(page.rows[0], r.top) << r.name;
        EXPECT_EQ(page.rows[6], r.bottom) << r.name;
        EXPECT_EQ(page.pushrow, r.push) << r.name;
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

    const struct {
        const char* name;
        const char* model;
        std::string list1;  // empty: left as stored
        size_t hidden;
    } reopen[] = {
        {"the same model reads its list again", "ATmega32", "", 4},
        {"another model starts afresh", "ATtiny2313", "", 0},
        {"a list of the wrong length starts afresh", "ATmega32", "1", 0},
        {"a digit other than 0 and 1 starts afresh", "ATmega32", std::string(static_cast<size_t>(count / 2), '2'), 0},
    };
    for (const auto& r : reopen) {
        Chip again(r.model);
        for (const char* name : {kAlternativeSfrModel, kAlternativeSfrList1, kAlternativeSfrList2})
            again.settings.putsetting(name, chip.settings.getsetting(name, ""));
        if (!r.list1.empty()) again.settings.putsetting(kAlternativeSfrList1, r.list1);
        AlternativeRegisters reopened(again.m, again.settings);
        reopened.open();
        const auto& flags = reopened.hiddenlist();
        EXPECT_EQ(static_cast<size_t>(std::count(flags.begin(), flags.end(), 1)), r.hidden) << r.name;
        EXPECT_EQ(flags.size(), again.m.namedregisters.size()) << r.name;
        EXPECT_EQ(again.settings.getsetting(kAlternativeSfrModel, ""), r.model == std::string("ATmega32") ? "atmega32" : "attiny2313")
            << r.name;
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

}  // namespace
}  // namespace velmora::test
