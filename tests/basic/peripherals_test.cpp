// Adcin, Read, Write, the character LCD and the hardware UART statements: the lines they
// generate, their routines by the model's kinds and the Define parameters, the baud divisor,
// every message, and programs that convert, keep bytes in the EEPROM, write to a character LCD
// module on the simulated pins and print over the USART of each kind of model.
//
// WaitMs, WaitUs, High, Low, Toggle and Config: the lines they generate, the delay routines'
// constants at several clocks, and the cycles a wait takes on the simulator, each worked out
// by hand from the instruction table (RCALL 3, RET 4, SBIW 2, taken branch 2, others 1).

#include <sstream>

#include "basicfixture.h"
#include "devices/lcdheadless.h"
#include "devices/lcdpaint.h"

namespace velmora::test {
namespace {

const char kLcd2x16[] = "Define LCD_LINES = 2\r\nDefine LCD_CHARS = 16\r\n";

TEST(BasicPeripherals, StatementLines) { expectcoderows("Peripherals: code"); }

TEST(BasicPeripherals, RoutinesFollowTheModelAndTheDefines) { expectroutinerows("Peripherals: routines"); }

TEST(BasicPeripherals, Messages) {
    expectmessagerows("Peripherals: messages");
    // Every shipped model has an EEPROM.
    BasicModel noeeprom = basicmodel("ATmega32");
    noeeprom.eeclass = 1;
    EXPECT_TRUE(basiccompile("Dim b As Byte\r\nRead 0, b", noeeprom, CompileOptions{})
                    .error.ends_with(": The selected microcontroller model does not feature EEPROM data memory."));
}

TEST(BasicPeripherals, ConversionsAndEepromOnTheSimulator) {
    const std::string source =
        "Dim w As Word\r\nDim b As Byte\r\nDim e As Byte\r\nHseropen 9600\r\nAdcin 2, w\r\nAdcin 2, b\r\n"
        "Write 1000, 123\r\nWrite 5, b\r\nRead 1000, e\r\nHserout #w, \" \", #b, \" \", #e\r\nRead 5, e\r\n"
        "Hserout \" \", #e\r\nEnd\r\n";
    for (const char* model : {"ATmega32", "ATmega328P"}) {
        BasicRun run(source, model, BasicRun::NotStarted{}, 20000000);
        run.m.analog[2].analogmode = true;
        run.m.analog[2].analoginput = 700;
        run.start();
        // 700 in ten bits; its upper eight bits 700 / 4 = 175.
        EXPECT_EQ(run.sent, "700 175 123 175") << model;
        EXPECT_EQ(run.m.eeprommem[1000], 123) << model;
    }
}

TEST(BasicPeripherals, LcdStatementsOnTheModule) {
    for (const TableRow& row : statementrows("Peripherals: LCD module")) {
        BasicRun run(row[2], "ATmega32", BasicRun::NotStarted{}, 20000000);
        std::string error;
        const auto lcd = attachlcd(run.m, row[1], error);
        ASSERT_TRUE(lcd) << error;
        run.start();
        EXPECT_FALSE(lcd->error) << row.where;
        std::string shown;
        for (const std::string& text : lcdtextrows(lcd->state, lcd->config.lines, lcd->config.chars))
            shown += (shown.empty() ? "" : "|") + text;
        EXPECT_EQ(shown, row[3]) << row.where;
    }
}

// Lcdinit on four lines: each 0x33 and the 0x22 go out as two strobes in eight-bit mode. The
// first strobe of each is executed (0x30, 0x30, 0x30, then 0x20, which selects four bits); the
// second comes within the first's busy time during the start and is dropped without an error.
// The 5 ms of every command then let the next byte start afresh: 0x28, 0x0C, 0x01.
TEST(BasicPeripherals, LcdinitSendsTheStartSequence) {
    BasicRun run(std::string(kLcd2x16) + "Lcdinit\r\nEnd\r\n", "ATmega32", BasicRun::NotStarted{}, 20000000);
    std::ostringstream log;
    std::string error;
    const auto lcd = attachlcd(run.m, "2x16", error, &log);
    ASSERT_TRUE(lcd) << error;
    run.start();
    std::istringstream lines(log.str());
    std::string cycle, device, what, bytes;
    while (lines >> cycle >> device >> what) {
        std::string value;
        lines >> value;
        bytes += (bytes.empty() ? "" : " ") + what.substr(0, 1) + value;
    }
    EXPECT_EQ(bytes, "c30 c30 c30 c20 c28 c0C c01");
    EXPECT_FALSE(lcd->error);
}

TEST(BasicPeripherals, UserCharacterReachesTheModule) {
    BasicRun run(std::string(kLcd2x16) +
                     "Lcdinit\r\nLcddefchar 2, 4, 14, 31, 0, 31, 14, 4, 0\r\nLcdout \"<\", 2, \">\"\r\nEnd\r\n",
                 "ATmega32", BasicRun::NotStarted{}, 20000000);
    std::string error;
    const auto lcd = attachlcd(run.m, "2x16", error);
    ASSERT_TRUE(lcd) << error;
    run.start();
    EXPECT_EQ(lcd->state.cells[1].code, 2);
    EXPECT_EQ(lcd->state.cells[1].glyph, (LcdGlyph{4, 14, 31, 0, 31, 14, 4, 0}));
    EXPECT_EQ(lcd->state.cells[2].code, '>');
}

TEST(BasicHardwareSerial, ProgramsPrintOnEveryKindOfUsart) {
    const std::string hello = "Hseropen 9600\r\nHserout \"Hello, world\", CrLf\r\nEnd";
    for (const char* model : {"ATmega32", "ATmega328P", "ATtiny2313", "AT90S2313", "ATmega128", "ATmega162"}) {
        SCOPED_TRACE(model);
        EXPECT_EQ(BasicRun(hello, model).sent, "Hello, world\r\n");
    }
}

TEST(BasicHardwareSerial, ItemsSendTheirBytes) { expectsentrows("Hardware serial: sent"); }

TEST(BasicHardwareSerial, DivisorComesNearestTheRate) {
    for (const TableRow& row : statementrows("Hardware serial: divisor")) {
        SCOPED_TRACE(row.where);
        const bool classic = row[0] == "AT90S2313";
        BasicModel model = basicmodel(row[0]);
        model.clockmhz = std::stod(row[1]);
        const BasicCompileResult result =
            basiccompile("Define ALLOW_ALL_BAUDRATES = 1\r\nHseropen " + row[2], model, {});
        ASSERT_TRUE(result.ok) << result.error;
        std::string found;
        int ldi = 0, divisor = 0, status = -1;
        for (const std::string& line : asmlines(result.asmtext)) {
            if (line.starts_with(";       ")) found += line.substr(8) + "|";
            if (!line.starts_with("\tLDI R16,0x") || line.find("RAMEND") != std::string::npos) continue;
            const int value = std::stoi(line.substr(11), nullptr, 16);
            if (ldi == 0) divisor = value;
            if (ldi == 1 && !classic) divisor += value << 8;
            if (ldi == 2 && !classic) status = value - 64;
            if (ldi == 1 && classic) status = 0;
            ++ldi;
        }
        EXPECT_EQ(found + "UBRR " + std::to_string(divisor) + " " + std::to_string(status), row[3]);
    }
}

TEST(BasicHardwareSerial, MisusesStopWithTheirMessages) { expectmessagerows("Hardware serial: messages"); }

TEST(BasicLongArithmetic, ProductsQuotientsAndDecimalsOnTheSimulator) { expectsentrows("Long arithmetic: sent"); }

TEST(BasicDelays, StatementLines) { expectcoderows("Delays: code"); }

TEST(BasicDelays, RoutinesFollowTheClockAndTheInstructionSet) { expectroutinerows("Delays: routines"); }

TEST(BasicDelays, RoutinesAreWrittenOnceInTheirPlace) {
    const BasicCompileResult result =
        compilebasic("Dim a As Word\r\nWaitUs 300\r\nWaitMs 2\r\nWaitUs 5\r\na = Sqr(a)\r\nWaitMs 1\r\n");
    ASSERT_TRUE(result.ok) << result.error;
    std::vector<std::string> comments;
    for (const std::string& line : asmlines(result.asmtext))
        if (line.ends_with(" Routine") || line.find(" Routine - ") != std::string::npos) comments.push_back(line);
    EXPECT_EQ(comments, (std::vector<std::string>{"; Square Root Routine", "; Waitms Routine",
                                                  "; Waitus Routine - Byte Argument",
                                                  "; Waitus Routine - Word Argument"}));
}

// Cycles the statement adds to a program, on the simulator; `mhz` is the clock of the compile
// when no Define sets it.
uint64_t cyclesof(const std::string& model, const std::string& before, const std::string& statement, double mhz = 0) {
    BasicRun with(before + statement + "\r\n", model, BasicRun::NotStarted{}, 50000000, mhz);
    BasicRun without(before, model, BasicRun::NotStarted{}, 50000000, mhz);
    with.start();
    without.start();
    return with.m.totalcycles - without.m.totalcycles;
}

// The rows at 3.6864 MHz: a clock of no whole megahertz, F = 3.6864 (single precision), Int(F) = 3: WaitMs counts with
// Int(F), the WaitUs forms with F itself, so the waits are off the clock by design.
TEST(BasicDelays, WaitsTakeTheCyclesWorkedOutFromTheInstructionTable) {
    for (const TableRow& row : statementrows("Delays: cycles"))
        EXPECT_EQ(cyclesof(row[0], declarations(row[1]), row[2], std::stod(row[3])),
                  static_cast<uint64_t>(row.number(4)))
            << row.where;
}

TEST(BasicPins, PinsMoveOnTheSimulator) {
    BasicRun run("High PORTB.0\r\nLow PORTB.1\r\nToggle PORTB.2\r\nToggle PORTB.2\r\nToggle PORTB.3\r\n"
                 "Config PORTC = Output\r\nConfig PORTC.4 = Input\r\nDim f As Bit\r\nToggle f\r\n",
                 "ATmega328P");
    // ATmega328P: DDRB 0x24, PORTB 0x25, DDRC 0x27, which has no bit 7.
    EXPECT_EQ(run.m.datamem[0x25] & 0x0F, 0x09) << "PB0 high, PB1 low, PB2 toggled twice, PB3 once";
    EXPECT_EQ(run.m.datamem[0x24] & 0x0F, 0x0F);
    EXPECT_EQ(run.m.datamem[0x27], 0x6F);
}

TEST(BasicDelays, Messages) { expectmessagerows("Delays: messages"); }

}  // namespace
}  // namespace velmora::test
