// Load Program, Save Memory, Clear Memory, the reload click and the load at start-up: the
// order of their steps, their messages, and the state they leave.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/memorysettings.h"
#include "image/programcommands.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

constexpr char kProgramDirectory[] = "/opt/velmora";

// Three bytes, and a file whose second record lies beyond 256 bytes of flash.
constexpr char kThreeBytes[] = ":03000000AABBCC" "CC\r\n:00000001FF\r\n";
constexpr char kBeyondFlash[] = ":0100000055AA\r\n:0101000055A9\r\n";

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

    std::string file(const std::string& name, const std::string& text) {
        const fs::path path = folder / name;
        writefile(path, text);
        return path.string();
    }
    FileChooser choose(const std::string& path) {
        return [this, path](const std::string& start) {
            startfolders.push_back(start);
            return path;
        };
    }
    bool memoryisempty() const {
        return std::all_of(m.progmem.begin(), m.progmem.end(), [&](uint8_t b) { return b == m.unprogrammed; }) &&
               std::all_of(m.eeprommem.begin(), m.eeprommem.end(), [&](uint8_t b) { return b == m.unprogrammed; });
    }
};

TEST_F(ProgramCommandsTest, GuardsInTheirOrder) {
    const struct {
        bool running, disassembler, breakpoints;
        const char* message;
    } cases[] = {
        {true, true, true, "Please stop the simulation first."},
        {false, true, true, "Please close Disassembler window first."},
        {false, false, true, "Please close Breakpoints Manager window first."},
    };
    const std::string path = file("p.hex", kThreeBytes);
    for (const auto& c : cases) {
        m.simulationrunning = c.running;
        recorder.disassembleropen = c.disassembler;
        recorder.breakpointsopen = c.breakpoints;
        m.progmem[0] = 0x11;
        const CommandResult results[] = {commands.menuload(choose(path)), commands.menusave(choose(path)),
                                         commands.menuclear()};
        for (CommandResult r : results) EXPECT_EQ(r, CommandResult::Refused) << c.message;
        EXPECT_EQ(messenger.messages, std::vector<std::string>(3, c.message));
        EXPECT_TRUE(startfolders.empty()) << "no dialog after a refusal";
        EXPECT_TRUE(recorder.events.empty());
        EXPECT_EQ(m.progmem[0], 0x11);
        messenger.messages.clear();
    }
}

TEST_F(ProgramCommandsTest, ALoadStepByStep) {
    m.progmem[100] = 0x42;
    m.eeprommem[3] = 0x33;
    m.pc = 9;
    const std::string path = file("blink.hex", kThreeBytes);
    EXPECT_EQ(commands.menuload(choose(path)), CommandResult::Done);

    EXPECT_EQ(startfolders, std::vector<std::string>{kProgramDirectory});
    EXPECT_EQ(settings.getsetting("Last Path", ""), folder.path().string());
    EXPECT_EQ(recorder.events, (std::vector<std::string>{"menus off", "yield", "clear breakpoints", "refresh editors",
                                                         "companions " + path, "menus on"}));
    EXPECT_EQ(messenger.messages,
              std::vector<std::string>{"Operation completed.\nTotal 3 (0.00K) program bytes loaded."});
    EXPECT_EQ(commands.qprogram(), path);
    // Three bytes in, the former program gone, EEPROM refilled, and clean ran.
    EXPECT_EQ(std::vector<int>({m.programbytes, m.progmem[2], m.progmem[100], m.eeprommem[3], m.pc}),
              std::vector<int>({3, 0xCC, 0xFF, 0xFF, 0}));
    EXPECT_EQ(m.totalcycles, 12345u);

    // The next dialog starts where this one ended.
    commands.menuload(choose(""));
    EXPECT_EQ(startfolders.back(), folder.path().string());
}

TEST_F(ProgramCommandsTest, NoFileChosenChangesNothing) {
    m.progmem[0] = 0x11;
    EXPECT_EQ(commands.menuload(choose("")), CommandResult::Cancelled);
    EXPECT_EQ(commands.menusave(choose("")), CommandResult::Cancelled);
    EXPECT_EQ(m.progmem[0], 0x11);
    EXPECT_TRUE(recorder.events.empty());
    EXPECT_TRUE(messenger.messages.empty());
}

TEST_F(ProgramCommandsTest, AFailedLoadLeavesNoPartialProgram) {
    commands.menuload(choose(file("good.hex", kThreeBytes)));
    recorder.events.clear();
    messenger.messages.clear();
    m.eeprommem[0] = 0x01;

    const std::string path = file("bad.hex", kBeyondFlash);
    EXPECT_EQ(commands.menuload(choose(path)), CommandResult::Failed);
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Input program file in Intel Hex Format contains "
                                                           "errors.\nLine number 2: Address out of range."});
    EXPECT_EQ(commands.qprogram(), "");
    EXPECT_EQ(m.programbytes, 0);
    EXPECT_TRUE(memoryisempty()) << "also the byte that the first record stored";
    EXPECT_EQ(recorder.events, (std::vector<std::string>{"menus off", "yield", "clear breakpoints", "refresh editors",
                                                         "companions " + path, "menus on"}));
}

TEST_F(ProgramCommandsTest, TheUnprogrammedValueActsAtTheNextLoad) {
    const std::string path = file("p.hex", kThreeBytes);
    commands.menuload(choose(path));
    m.unprogrammed = 0x00;
    EXPECT_EQ(m.progmem[3], 0xFF) << "not at once";
    commands.menuload(choose(path));
    EXPECT_EQ(m.progmem[3], 0x00);
    EXPECT_EQ(m.eeprommem[0], 0x00);
}

TEST_F(ProgramCommandsTest, ClearMemory) {
    commands.menuload(choose(file("p.hex", kThreeBytes)));
    recorder.events.clear();
    m.pc = 5;
    EXPECT_EQ(commands.menuclear(), CommandResult::Done);
    EXPECT_EQ(recorder.events,
              (std::vector<std::string>{"menus off", "clear breakpoints", "menus on", "clear watches"}));
    EXPECT_EQ(m.programbytes, 0);
    EXPECT_TRUE(memoryisempty());
    EXPECT_EQ(commands.qprogram(), "");
    EXPECT_EQ(m.pc, 0);
    EXPECT_EQ(messenger.messages.size(), 1u) << "only the load spoke";
}

TEST_F(ProgramCommandsTest, SavingWritesUpToTheLastProgrammedByteInWholeWords) {
    const struct {
        std::vector<std::pair<int, uint8_t>> bytes;
        const char* record;
    } cases[] = {
        {{{0, 0xAA}, {1, 0xBB}, {2, 0xCC}}, ":04000000AABBCCFFCC"},  // three bytes: a whole word
        {{{5, 0x01}}, ":06000000FFFFFFFFFF01FE"},                     // an odd last byte ends the image
    };
    for (const auto& c : cases) {
        std::fill(m.progmem.begin(), m.progmem.end(), 0xFF);
        for (const auto& [address, value] : c.bytes) m.progmem[address] = value;
        messenger.messages.clear();
        EXPECT_EQ(commands.menusave(choose((folder / "out").string())), CommandResult::Done);
        EXPECT_EQ(readfile(folder / "out.hex"), std::string(":020000040000FA\r\n") + c.record + "\r\n:00000001FF\r\n");
        EXPECT_EQ(messenger.messages, std::vector<std::string>{"Program memory saved."});
        std::filesystem::remove(folder / "out.hex");
    }
    EXPECT_EQ(settings.getsetting("Last Path", ""), folder.path().string());
}

TEST_F(ProgramCommandsTest, EmptyMemoryIsNotSaved) {
    EXPECT_EQ(commands.menusave(choose((folder / "x").string())), CommandResult::Refused);
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"The program memory is empty."});
    EXPECT_TRUE(startfolders.empty());
    // Empty means equal to the unprogrammed value, whatever it is.
    m.unprogrammed = 0x00;
    std::fill(m.progmem.begin(), m.progmem.end(), 0x00);
    EXPECT_EQ(commands.menusave(choose("")), CommandResult::Refused);
}

TEST_F(ProgramCommandsTest, SaveTargetsExtensionOverwriteAndUnwritable) {
    m.progmem[0] = 0x01;
    const fs::path dotted = folder / "my.project";
    fs::create_directory(dotted);
    commands.menusave(choose((dotted / "blink.v2.txt").string()));  // the typed extension becomes .hex
    EXPECT_TRUE(fs::exists(dotted / "blink.hex"));
    EXPECT_EQ(settings.getsetting("Last Path", ""), dotted.string());

    const std::string target = file("exists.hex", "old");  // overwriting asks first
    EXPECT_EQ(commands.menusave(choose((folder / "exists.bak").string())), CommandResult::Cancelled);
    EXPECT_EQ(recorder.questions, std::vector<std::string>{"Do you want to overwrite existing file " + target + "?"});
    EXPECT_EQ(readfile(target), "old");
    recorder.answer = true;
    EXPECT_EQ(commands.menusave(choose(target)), CommandResult::Done);
    EXPECT_EQ(readfile(target).substr(0, 15), ":020000040000FA");

    messenger.messages.clear();
    EXPECT_EQ(commands.menusave(choose((folder / "no such folder" / "p.hex").string())), CommandResult::Failed);
    EXPECT_EQ(messenger.messages, std::vector<std::string>{kCannotSaveText});
}

TEST_F(ProgramCommandsTest, ReloadTheShownFile) {
    EXPECT_EQ(commands.reload(), CommandResult::Cancelled) << "nothing loaded, nothing happens";
    EXPECT_TRUE(messenger.messages.empty());
    const std::string path = file("p.hex", kThreeBytes);
    commands.menuload(choose(path));
    writefile(path, ":0100000011EE\r\n");
    recorder.events.clear();
    messenger.messages.clear();
    recorder.disassembleropen = true;  // the reload has only the guard of a running simulation
    EXPECT_EQ(commands.reload(), CommandResult::Done);
    EXPECT_EQ(std::vector<int>({m.progmem[0], m.progmem[1]}), std::vector<int>({0x11, 0xFF}));
    EXPECT_EQ(recorder.events.front(), "menus off");
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Operation completed.\nTotal 1 (0.00K) program bytes loaded."});

    messenger.messages.clear();
    recorder.events.clear();
    m.simulationrunning = true;
    EXPECT_EQ(commands.reload(), CommandResult::Refused);
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Please stop the simulation first."});
    recorder.singlestepping = true;  // stepping one instruction at a time is stopped, then the file loads
    EXPECT_EQ(commands.reload(), CommandResult::Done);
    ASSERT_GE(recorder.events.size(), 2u);
    EXPECT_EQ(recorder.events[0] + ", " + recorder.events[1], "stop, menus off");

    messenger.messages.clear();
    std::filesystem::remove(path);
    EXPECT_EQ(commands.reload(), CommandResult::Failed);
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"The file do not exist any more."});
    EXPECT_EQ(m.progmem[0], 0x11) << "the program stays";
}

TEST_F(ProgramCommandsTest, LoadAtStartUp) {
    EXPECT_EQ(commands.autostartload(), CommandResult::Cancelled);

    settings.putsetting("Auto Start Hex File", (folder / "gone.hex").string());
    EXPECT_EQ(commands.autostartload(), CommandResult::Cancelled);
    EXPECT_EQ(settings.getsetting("Auto Start Hex File", "x"), "") << "a missing file is forgotten";
    EXPECT_TRUE(messenger.messages.empty());

    const std::string path = file("p.hex", kThreeBytes);
    settings.putsetting("Auto Start Hex File", path);
    EXPECT_EQ(commands.autostartload(), CommandResult::Done);
    EXPECT_EQ(commands.qprogram(), path);
    EXPECT_EQ(messenger.messages.size(), 1u);
    // At start-up the menus and the event queue are left alone.
    EXPECT_EQ(recorder.events,
              (std::vector<std::string>{"clear breakpoints", "refresh editors", "companions " + path}));
}

TEST_F(ProgramCommandsTest, AHostWithNothingConnectedStillWorks) {
    ProgramCommands bare(m, messenger, settings, ProgramCommandHost{}, kProgramDirectory);
    EXPECT_EQ(bare.menuload(choose(file("p.hex", kThreeBytes))), CommandResult::Done);
    m.progmem[0] = 0x01;
    file("q.hex", "");
    EXPECT_EQ(bare.menusave(choose((folder / "q.hex").string())), CommandResult::Cancelled) << "no one said yes";
    EXPECT_EQ(bare.menuclear(), CommandResult::Done);
}

TEST(ProgramTexts, KilobytesAreCutToFourCharacters) {
    const struct {
        int bytes;
        const char* text;
    } cases[] = {{0, "0"},      {3, "0.00"},     {94, "0.09"},    {512, "0.5"},     {1024, "1"},
                 {1536, "1.5"}, {10240, "10"},   {11000, "10.7"}, {114930, "112."}, {131072, "128"},
                 {262144, "256"}};
    for (const auto& c : cases) EXPECT_EQ(kilobytestext(c.bytes), c.text) << c.bytes;
}

TEST(ProgramTexts, TheShortLabelKeepsTheEndOfALongPath) {
    const std::string shortpath = "/home/user/blink.hex";
    EXPECT_EQ(shortenedpath(shortpath), shortpath);
    const std::string longpath = "/home/user/" + std::string(60, 'd') + "/blink.hex";
    EXPECT_EQ(shortenedpath(longpath), "... " + longpath.substr(longpath.size() - 65));
    EXPECT_EQ(shortenedpath(std::string(65, 'x')), std::string(65, 'x'));
}

}  // namespace
}  // namespace velmora::test
