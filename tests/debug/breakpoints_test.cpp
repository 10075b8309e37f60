// Address breakpoints, the Breakpoints Manager's view of a program and special breakpoints:
// sorting and toggling, which listing rows take a breakpoint, a fast run that falls back to
// Step By Step exactly there, and value breakpoints on each kind of location.

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "assembler/assemblefile.h"
#include "core/hextext.h"
#include "debug/breakpointsmanager.h"
#include "debug/specialbreakpoints.h"
#include "memoryfixture.h"
#include "support/scriptedquestions.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::string joined(const std::array<std::string, kBreakpointCount>& entries) {
    std::string text;
    for (const std::string& entry : entries) text += (text.empty() ? "" : " ") + (entry.empty() ? "-" : entry);
    return text;
}

TEST(BreakpointList, ClicksToggleSortedEntriesAndTheMachineFollows) {
    Chip chip("ATmega32");
    BreakpointList list(chip.m);
    using T = BreakpointList::Toggle;
    const std::map<std::string, T> results = {{"set", T::Set}, {"cleared", T::Cleared}, {"ignored", T::Ignored}};
    for (const TableRow& click : tablerows("debugtables.txt", "clicks")) {
        EXPECT_EQ(list.toggle(click[0]), results.at(click[1])) << click.where;
        EXPECT_EQ(joined(list.entries()), click[2]) << click.where;
    }
    for (int32_t word : {4, 10}) {
        chip.m.pc = word;
        EXPECT_TRUE(atbreakpoint(chip.m)) << word;
    }
    chip.m.pc = 0x10;
    EXPECT_FALSE(atbreakpoint(chip.m));

    // Eight more fill the list; the eleventh is refused and changes nothing.
    for (int word = 0x20; word < 0x28; ++word) EXPECT_EQ(list.toggle(hex6(static_cast<uint32_t>(word))), T::Set);
    const std::string full = joined(list.entries());
    EXPECT_EQ(list.toggle("000030"), T::Full);
    EXPECT_EQ(joined(list.entries()), full);
    list.clear();
    EXPECT_EQ(joined(list.entries()), "- - - - - - - - - -");
    EXPECT_FALSE(chip.m.breakpointsset);
}

// A program assembled into a temporary folder, loaded from its HEX with the listing beside it.
struct ListedProgram {
    TempFolder folder;
    std::string hex;
    explicit ListedProgram(Chip& chip, const std::string& source) {
        const std::string asmpath = (folder / "prog.asm").string();
        std::ofstream(asmpath, std::ios::binary) << source;
        std::ostringstream out, err;
        EXPECT_EQ(assemblefile(asmpath, "ATmega32", std::string(VELMORA_SOURCE_DATA_DIR) + "/models", out, err), 0)
            << out.str() << err.str();
        hex = (folder / "prog.hex").string();
        chip.loadhex(hex);
    }
};

const char* const kProgram =
    "; counts in r16\r\n"
    "start:\tldi r16,0\r\n"
    "again:\tinc r16\r\n"
    "\tsts 0x0100,r16\r\n"
    "\tcpi r16,5\r\n"
    "\tbrne again\r\n"
    "\tsleep\r\n";

struct ManagerFixture {
    Chip chip{"ATmega32"};
    ScriptedQuestions questions;
    BreakpointList list{chip.m};
    BreakpointsManager manager{chip.m, list, questions, chip.messenger, chip.settings};
};

// Which rows of the listing view begin with an address, and so can take a breakpoint: the
// rows with code, the second word of STS among them; comments and directives cannot.
TEST(BreakpointsManager, ListingRowsWithCodeKeepTheirAddress) {
    ManagerFixture f;
    ListedProgram program(f.chip, kProgram);
    f.manager.load(program.hex);
    ASSERT_EQ(f.questions.questions.size(), 1u);
    EXPECT_EQ(f.questions.questions[0], "Do you want to use existing listing file " + (program.folder / "prog.lst").string() + "?");
    std::vector<std::string> addressed;
    for (const std::string& line : f.manager.lines())
        if (const auto address = rowaddress(line)) addressed.push_back(*address + " " + line.substr(8, 4));
    const std::vector<std::string> expected = {"000000 E000", "000001 9503", "000002 9300", "000003 0100",
                                               "000004 3005", "000005 F7D9", "000006 9588"};
    EXPECT_EQ(addressed, expected);
    EXPECT_EQ(f.manager.lines()[0], kAssemblerListingRule);
    EXPECT_EQ(f.manager.lines()[4].substr(0, 22), "                ; coun");  // its address blanked
}

TEST(BreakpointsManager, WithoutTheListingTheViewIsTheDisassembly) {
    for (const char* why : {"declined", "foreign"}) {
        ManagerFixture f;
        ListedProgram program(f.chip, kProgram);
        if (std::string(why) == "foreign") std::ofstream(program.folder / "prog.lst") << "Some other tool\r\n";
        f.questions.yes = std::string(why) == "foreign";
        f.manager.load(program.hex);
        // A header, then one row per word (programbytes / 2) of the plain layout.
        EXPECT_EQ(f.manager.lines().size(), static_cast<size_t>(f.chip.m.programbytes / 2 + 4)) << why;
        EXPECT_FALSE(rowaddress(f.manager.lines()[0])) << why;
        EXPECT_EQ(f.manager.lines().back().substr(0, 6), "000006") << why;
        EXPECT_FALSE(f.manager.scrollenabled()) << why;
    }
}

// A click on a row sets its breakpoint; a run at the fastest rate falls back to Step By Step
// with the program counter on it, the instruction there not yet run; the rows show the mark
// and the arrow; Hold PC In Focus brings the arrow's row into view.
TEST(BreakpointsManager, AClickedRowStopsAFastRunThere) {
    ManagerFixture f;
    ListedProgram program(f.chip, kProgram);
    f.manager.load(program.hex);
    int cpirow = -1;
    for (int row = 0; row < kBreakpointRows; ++row)
        if (f.manager.rows(80)[static_cast<size_t>(row)].text.starts_with("000004")) cpirow = row;
    ASSERT_GE(cpirow, 0);
    f.manager.clickrow(cpirow);
    f.chip.runtosleep();
    EXPECT_EQ(f.chip.run.simulationrate(), kRateStep);
    EXPECT_EQ(f.chip.m.pc, 4);
    // ldi, inc, sts (two words, one instruction): three instructions; r16 = 1.
    EXPECT_EQ(f.chip.m.totalinstructions, 3u);
    EXPECT_EQ(f.chip.m.datamem[16], 1);
    const auto rows = f.manager.rows(12);
    EXPECT_TRUE(rows[static_cast<size_t>(cpirow)].breakpoint);
    EXPECT_TRUE(rows[static_cast<size_t>(cpirow)].pc);
    EXPECT_EQ(rows[static_cast<size_t>(cpirow)].text, "000004  3005");
    // Each resumption comes back once per pass of the loop: four more, then SLEEP.
    int stops = 1;
    while (f.chip.m.simulationrunning && stops < 10) {
        f.chip.run.menuspeed(kRateUltimate);
        stops += f.chip.m.simulationrunning;
    }
    EXPECT_EQ(stops, 5);

    f.manager.setscroll(10);
    f.chip.m.pc = 1;
    f.manager.draw();
    EXPECT_EQ(f.manager.scroll(), 0);  // held: the row stands 3 below the top, bounded by the start
    f.manager.setholdpcinfocus(false);
    EXPECT_EQ(f.chip.settings.getsetting(kHoldPcInFocus, ""), "0");
}

// Value breakpoints on a working register, an I/O register and SRAM (the program and the
// counts worked out by hand are in data/debugtables.txt).
TEST(SpecialBreakpoints, StopWhenAValueEqualsOrChanges) {
    for (const TableRow& row : tablerows("debugtables.txt", "valuebreaks")) {
        SCOPED_TRACE(row.where);
        Chip chip("ATmega32");
        loadwords(chip.m, {0xE000, 0x9503, 0xBB08, 0x9300, 0x0100, 0xCFFB});
        ScriptedQuestions questions;
        questions.answers.assign(row.cells.begin() + 3, row.cells.end());
        SpecialBreakpoints special(chip.run, questions, chip.messenger);
        special.set(0);
        EXPECT_EQ(special.addresslabel(0), row[0]);
        EXPECT_EQ(special.conditionlabel(0), row[1]);
        chip.runtosleep();
        EXPECT_EQ(chip.run.simulationrate(), kRateStep);
        EXPECT_EQ(chip.m.totalinstructions, static_cast<uint64_t>(row.number(2)));
    }
}

TEST(SpecialBreakpoints, RejectedAnswersLeaveTheEntry) {
    for (const TableRow& row : tablerows("debugtables.txt", "rejectedspecial")) {
        Chip chip("ATmega32");
        ScriptedQuestions questions;
        for (size_t i = 1; i < row.cells.size(); ++i)
            questions.answers.push_back(row[i] == "(cancel)" ? std::nullopt : std::optional(row[i]));
        SpecialBreakpoints special(chip.run, questions, chip.messenger);
        special.set(2);
        EXPECT_EQ(special.entries()[2].kind, SpecialKind::Empty) << row.where;
        EXPECT_EQ(chip.messenger.messages, std::vector<std::string>(row[0].empty() ? 0 : 1, row[0])) << row.where;
    }
}

// Two entries that fire in the same step: the first acts; the later Value Change keeps its
// old value until the next step.
TEST(SpecialBreakpoints, TheFirstOfTwoActsAndTheOtherWaits) {
    Chip chip("ATmega32");
    loadwords(chip.m, {0xE000, 0x9503, 0xBB08, 0x9300, 0x0100, 0xCFFB});
    ScriptedQuestions questions;
    questions.answers = {"10", "1", "1", "10", "2"};
    SpecialBreakpoints special(chip.run, questions, chip.messenger);
    special.set(0);
    special.set(1);
    chip.runtosleep();
    EXPECT_EQ(chip.m.totalinstructions, 2u);
    EXPECT_EQ(special.entries()[1].value, 0);
    special.clear();
    EXPECT_EQ(special.addresslabel(1), "");
}

}  // namespace
}  // namespace velmora::test
