// Load Program, Save Memory, Clear Memory, the reload click and the load at start-up: the
// order of their steps, their messages, and the state they leave. The scenarios are
// data/commands.txt; its head says how a row reads.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/memorysettings.h"
#include "image/programcommands.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

constexpr char kProgramDirectory[] = "/opt/velmora";

// The windows around the commands, answering from flags and writing down what is asked of them.
struct RecordingHost {
    bool disassembleropen = false, breakpointsopen = false, singlestepping = false, answer = false;
    std::vector<std::string> events;
    std::vector<std::string> questions;

    ProgramCommandHost host() {
        ProgramCommandHost h;
        const auto note = [this](std::string event) { return [this, event] { events.push_back(event); }; };
        h.disassembleropen = [this] { return disassembleropen; };
        h.breakpointsmanageropen = [this] { return breakpointsopen; };
        h.singlestepping = [this] { return singlestepping; };
        h.stopsimulation = note("stop");
        h.enablemenus = [this](bool on) { events.push_back(on ? "menus on" : "menus off"); };
        h.yield = note("yield");
        h.clearbreakpoints = note("clear breakpoints");
        h.refresheditors = note("refresh editors");
        h.loadcompanions = [this](const std::string& path) { events.push_back("companions " + path); };
        h.clearwatches = note("clear watches");
        h.askyesno = [this](const std::string& text) {
            questions.push_back(text);
            return answer;
        };
        return h;
    }
};

class ProgramCommandsTest : public ::testing::Test {
protected:
    TempFolder folder;
    Machine m;
    RecordingMessenger messenger;
    MemorySettings settings;
    RecordingHost recorder;
    ProgramCommands commands{m, messenger, settings, recorder.host(), kProgramDirectory};
    std::vector<std::string> startfolders;

    void SetUp() override {
        configurebaremachine(m, 256, 128, 64);
        m.cleanhooks.push_back([](Machine& machine) { machine.totalcycles = 12345; });  // marks a clean
    }

    FileChooser choose(const std::string& path) {
        return [this, path](const std::string& start) {
            startfolders.push_back(start);
            return path;
        };
    }
    // A cell with "$" standing for the temporary folder.
    std::string infolder(std::string text) const {
        for (size_t at; (at = text.find('$')) != std::string::npos;) text.replace(at, 1, folder.path().string());
        return text;
    }
    // The list joined by "; ", and forgotten.
    static std::string taken(std::vector<std::string>& list) {
        std::string joined;
        for (const std::string& item : list) joined += (joined.empty() ? "" : "; ") + item;
        list.clear();
        return joined;
    }
    std::string query(const std::string& what) {
        std::istringstream words(what);
        std::string key, rest;
        words >> key;
        std::getline(words >> std::ws, rest);
        const auto unprogrammed = [this](uint8_t b) { return b == m.unprogrammed; };
        if (key == "programbytes") return std::to_string(m.programbytes);
        if (key == "pc") return std::to_string(m.pc);
        if (key == "totalcycles") return std::to_string(m.totalcycles);
        if (key == "program") return commands.qprogram();
        if (key == "setting") return settings.getsetting(rest, "none");
        if (key == "file") return readfile(folder / rest);
        if (key == "exists") return fs::exists(folder / rest) ? "yes" : "no";
        if (key == "empty") return std::ranges::all_of(m.progmem, unprogrammed) &&
                                   std::ranges::all_of(m.eeprommem, unprogrammed) ? "yes" : "no";
        std::string bytes;
        std::istringstream addresses(rest);
        for (int address; addresses >> address;)
            bytes += (bytes.empty() ? "" : " ") + hexstring((key == "progmem" ? m.progmem : m.eeprommem).at(address));
        return bytes;
    }
    static std::string hexstring(uint8_t byte) {
        static const char digits[] = "0123456789ABCDEF";
        return {digits[byte >> 4], digits[byte & 15]};
    }
    void run(const std::string& section) {
        using Row = const TableRow&;
        const std::map<std::string, bool*> flags = {
            {"running", &m.simulationrunning},   {"disassembler", &recorder.disassembleropen},
            {"breakpoints", &recorder.breakpointsopen}, {"stepping", &recorder.singlestepping},
            {"answer", &recorder.answer}};
        const std::map<std::string, std::function<void(Row)>> steps = {
            {"file", [&](Row r) { writefile(folder / r[1], r[2]); }},
            {"remove", [&](Row r) { fs::remove(folder / r[1]); }},
            {"folder", [&](Row r) { fs::create_directory(folder / r[1]); }},
            {"flag", [&](Row r) { *flags.at(r[1]) = r.flag(2); }},
            {"poke", [&](Row r) { (r[1] == "progmem" ? m.progmem : m.eeprommem).at(r.number(2)) = r.number(3); }},
            {"fill", [&](Row r) { std::ranges::fill(m.progmem, static_cast<uint8_t>(r.number(1))); }},
            {"pc", [&](Row r) { m.pc = static_cast<int>(r.number(1)); }},
            {"unprogrammed", [&](Row r) { m.unprogrammed = static_cast<uint8_t>(r.number(1)); }},
            {"setting", [&](Row r) { settings.putsetting(r[1], infolder(r[2])); }}};
        // An action's row ends with the result it must give.
        const char* results[] = {"Refused", "Cancelled", "Done", "Failed"};
        const std::map<std::string, std::function<CommandResult(Row)>> actions = {
            {"load", [&](Row r) { return commands.menuload(choose(infolder(r[1]))); }},
            {"save", [&](Row r) { return commands.menusave(choose(infolder(r[1]))); }},
            {"clear", [&](Row) { return commands.menuclear(); }},
            {"reload", [&](Row) { return commands.reload(); }},
            {"autostart", [&](Row) { return commands.autostartload(); }}};
        const std::map<std::string, std::vector<std::string>*> lists = {
            {"messages", &messenger.messages}, {"events", &recorder.events},
            {"questions", &recorder.questions}, {"startfolders", &startfolders}};
        for (Row row : tablerows("commands.txt", section)) {
            if (steps.contains(row[0]))
                steps.at(row[0])(row);
            else if (actions.contains(row[0]))
                EXPECT_EQ(results[static_cast<int>(actions.at(row[0])(row))], row.cells.back()) << row.where;
            else if (lists.contains(row[0]))
                EXPECT_EQ(taken(*lists.at(row[0])), infolder(row[1])) << row.where;
            else if (row[0] == "is")
                EXPECT_EQ(query(row[1]), infolder(row[2])) << row.where;
            else
                ADD_FAILURE() << row.where << ": unknown step " << row[0];
        }
    }
};

TEST_F(ProgramCommandsTest, GuardsInTheirOrder) { run("guards in their order"); }
TEST_F(ProgramCommandsTest, ALoadStepByStep) { run("a load step by step"); }
TEST_F(ProgramCommandsTest, NoFileChosenChangesNothing) { run("no file chosen changes nothing"); }
TEST_F(ProgramCommandsTest, AFailedLoadLeavesNoPartialProgram) { run("a failed load leaves no partial program"); }
TEST_F(ProgramCommandsTest, TheUnprogrammedValueActsAtTheNextLoad) {
    run("the unprogrammed value acts at the next load");
}
TEST_F(ProgramCommandsTest, ClearMemory) { run("clear memory"); }
TEST_F(ProgramCommandsTest, SavingWritesUpToTheLastProgrammedByte) {
    run("saving writes up to the last programmed byte in whole words");
}
TEST_F(ProgramCommandsTest, EmptyMemoryIsNotSaved) { run("empty memory is not saved"); }
TEST_F(ProgramCommandsTest, SaveTargets) { run("save targets: extension, overwrite and a folder that is not there"); }
TEST_F(ProgramCommandsTest, ReloadTheShownFile) { run("reload the shown file"); }
TEST_F(ProgramCommandsTest, LoadAtStartUp) { run("load at start-up"); }

TEST_F(ProgramCommandsTest, AHostWithNothingConnectedStillWorks) {
    ProgramCommands bare(m, messenger, settings, ProgramCommandHost{}, kProgramDirectory);
    writefile(folder / "p.hex", ":03000000AABBCCCC\r\n:00000001FF\r\n");
    EXPECT_EQ(bare.menuload(choose((folder / "p.hex").string())), CommandResult::Done);
    m.progmem[0] = 0x01;
    writefile(folder / "q.hex", "");
    EXPECT_EQ(bare.menusave(choose((folder / "q.hex").string())), CommandResult::Cancelled) << "no one said yes";
    EXPECT_EQ(bare.menuclear(), CommandResult::Done);
}

TEST(ProgramTexts, KilobytesCutToFourCharactersAndTheShortLabelKeepsTheEndOfAPath) {
    for (const TableRow& row : tablerows("tables.txt", "Kilobytes"))
        EXPECT_EQ(kilobytestext(static_cast<int>(row.number(0))), row[1]) << row.where;
    const std::string longpath = "/home/user/" + std::string(60, 'd') + "/blink.hex";
    for (const std::string& path : {std::string("/home/user/blink.hex"), std::string(65, 'x'), longpath})
        EXPECT_EQ(shortenedpath(path), path.size() > 65 ? "... " + path.substr(path.size() - 65) : path) << path;
}

}  // namespace
}  // namespace velmora::test
