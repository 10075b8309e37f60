// WaitMs, WaitUs, High, Low, Toggle and Config: the lines they generate, the delay routines'
// constants at several clocks, and the cycles a wait takes on the simulator, each worked out
// by hand from the instruction table (RCALL 3, RET 4, SBIW 2, taken branch 2, others 1).

#include "basicfixture.h"

namespace velmora::test {
namespace {

TEST(BasicDelays, StatementLines) {
    const struct {
        const char* model;
        const char* before;  // declarations and Defines
        const char* statement;
        const char* code;
    } rows[] = {
        {"ATmega32", "", "WaitMs 1000", "LDI R24,0xE8|LDI R25,0x03|RCALL W001"},
        {"ATmega32", "Dim b As Byte\r\n", "WaitMs b", "MOV R24,R31|MOV R25,R15|RCALL W001"},
        {"ATmega32", "Dim b As Byte\r\nDefine SIMULATION_WAITMS_VALUE = 1\r\n", "WaitMs b",
         "LDI R24,0x01|LDI R25,0x00|RCALL W001"},
        // 10 x 256 - round(14 / 4 x 256) = 2560 - 896 = 1664 = 0x680.
        {"ATmega32", "", "WaitUs 10", "LDI R16,0x80|LDI R17,0x06|RCALL X000"},
        // At 1 MHz 14 cycles are 3584 units: below 0, so 0.
        {"ATmega32", "Define CLOCK_FREQUENCY = 1\r\n", "WaitUs 10", "LDI R16,0x00|LDI R17,0x00|RCALL X000"},
        // 25600 - round(14 / 8 x 256) = 25600 - 448 = 25152 = 0x6240.
        {"ATmega32", "Define CLOCK_FREQUENCY = 8\r\n", "WaitUs 100", "LDI R16,0x40|LDI R17,0x62|RCALL X000"},
        // c = 8 + 16 - 5 = 19: 76800 - round(19 / 8 x 256) = 76800 - 608 = 76192 = 0x0129A0.
        {"ATmega32", "Define CLOCK_FREQUENCY = 8\r\n", "WaitUs 300",
         "LDI R16,0xA0|LDI R17,0x29|LDI R18,0x01|RCALL Y000"},
        // Below 5 MHz c = 16: 256000 - 1024 = 254976 = 0x03E400.
        {"ATmega32", "", "WaitUs 1000", "LDI R16,0x00|LDI R17,0xE4|LDI R18,0x03|RCALL Y000"},
        {"ATmega32", "Dim b As Byte\r\n", "WaitUs b", "MOV R17,R31|RCALL X001"},
        {"ATmega32", "Dim w As Word\r\n", "WaitUs w", "MOV R17,R30|MOV R18,R31|RCALL Y001"},
        {"ATmega32", "", "High PORTB.3", "SBI PORTB,3|SBI DDRB,3"},
        {"ATmega32", "", "Low PORTD.7", "CBI PORTD,7|SBI DDRD,7"},
        {"ATmega32", "", "Toggle PORTC.0", "SBI PINC,0|SBI DDRC,0"},
        {"ATmega32", "Dim f As Bit\r\n", "High f", "SBR R31,1"},
        {"ATmega32", "Dim f As Bit\r\nDim g As Bit\r\n", "Low g", "CBR R31,2"},
        {"ATmega32", "Dim f As Bit\r\n", "Toggle f", "MOV R16,R31|LDI R17,0x01|EOR R16,R17|MOV R31,R16"},
        {"ATmega32", "", "Toggle SREG.6", "IN R16,0x3F|LDI R17,0x40|EOR R16,R17|OUT 0x3F,R16"},
        {"ATmega32", "", "Config PORTB.2 = Input", "CBI DDRB,2"},
        {"ATmega32", "", "Config PORTA.5 = Output", "SBI DDRA,5"},
        {"ATmega32", "", "Config PORTC = Input", "OUT DDRC,R15"},
        {"ATmega32", "", "Config PORTD = Output", "SER R16|OUT DDRD,R16"},
    };
    for (const auto& row : rows) {
        const BasicCompileResult result = compilebasic(std::string(row.before) + row.statement + "\r\n", row.model);
        ASSERT_TRUE(result.ok) << row.statement << ": " << result.error;
        EXPECT_EQ(rowcode(result, row.statement), row.code) << row.before << row.statement;
    }
}

TEST(BasicDelays, RoutinesFollowTheClockAndTheInstructionSet) {
    const struct {
        const char* model;
        const char* source;
        const char* comment;
        const char* code;
    } rows[] = {
        // K = (4 x 1000 - 12) div 4 = 997 = 0x3E5.
        {"ATmega32", "WaitMs 1", "; Waitms Routine",
         "W001: MOV R16,R24|OR R16,R25|BRNE W002|RET|W002: RCALL W003|SBIW R25:R24,0x01|BRNE W002|RET|"
         "W003: LDI R26,0xE5|LDI R27,0x03|W004: SBIW R27:R26,0x01|BRNE W004|RET"},
        // Six cycles a pass: K = (1000 - 14) div 6 = 164 = 0xA4.
        {"ATtiny12", "Define CLOCK_FREQUENCY = 1\r\nWaitMs 1", "; Waitms Routine",
         "W001: MOV R16,R24|OR R16,R25|BRNE W002|RET|W002: RCALL W003|SUBI R24,0x01|SBC R25,R15|MOV R16,R24|"
         "OR R16,R25|BRNE W002|RET|W003: LDI R26,0xA4|LDI R27,0x00|W004: SUBI R26,0x01|SBC R27,R15|MOV R16,R26|"
         "OR R16,R27|BRNE W004|RET"},
        // K = 7988 / 4 = 1997 = 0x7CD.
        {"ATmega32", "Define CLOCK_FREQUENCY = 8\r\nWaitMs 1", "; Waitms Routine",
         "W001: MOV R16,R24|OR R16,R25|BRNE W002|RET|W002: RCALL W003|SBIW R25:R24,0x01|BRNE W002|RET|"
         "W003: LDI R26,0xCD|LDI R27,0x07|W004: SBIW R27:R26,0x01|BRNE W004|RET"},
        // step = round(4 / 8 x 256) = 128.
        {"ATmega32", "Define CLOCK_FREQUENCY = 8\r\nWaitUs 1", "; Waitus Routine - Byte Argument",
         "X001: CLR R16|X000: LDI R19,0x80|LDI R20,0x00|X002: SUB R16,R19|SBC R17,R20|BRCC X002|RET"},
        // step = round(4 / 3 x 256) = round(341.33) = 341 = 0x155.
        {"ATmega32", "Define CLOCK_FREQUENCY = 3\r\nWaitUs 1", "; Waitus Routine - Byte Argument",
         "X001: CLR R16|X000: LDI R19,0x55|LDI R20,0x01|X002: SUB R16,R19|SBC R17,R20|BRCC X002|RET"},
        // k = 8 - 5 = 3 NOPs, step = round(8 / 8 x 256) = 256.
        {"ATmega32", "Define CLOCK_FREQUENCY = 8\r\nWaitUs 300", "; Waitus Routine - Word Argument",
         "Y001: CLR R16|Y000: LDI R19,0x00|LDI R20,0x01|Y002: SUB R16,R19|SBC R17,R20|SBC R18,R15|NOP|NOP|NOP|"
         "BRCC Y002|RET"},
        // Under 4096 flash bytes no NOPs: step = round(5 / 8 x 256) = 160.
        {"ATtiny13", "Define CLOCK_FREQUENCY = 8\r\nWaitUs 300", "; Waitus Routine - Word Argument",
         "Y001: CLR R16|Y000: LDI R19,0xA0|LDI R20,0x00|Y002: SUB R16,R19|SBC R17,R20|SBC R18,R15|BRCC Y002|RET"},
    };
    for (const auto& row : rows) {
        const BasicCompileResult result = compilebasic(std::string(row.source) + "\r\n", row.model);
        ASSERT_TRUE(result.ok) << row.source << ": " << result.error;
        EXPECT_EQ(routine(result, row.comment), row.code) << row.model << ": " << row.source;
    }
}

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

TEST(BasicDelays, WaitsTakeTheCyclesWorkedOutFromTheInstructionTable) {
    const struct {
        const char* model;
        const char* before;
        const char* statement;
        uint64_t cycles;
    } rows[] = {
        // WaitMs n, full set: 2 loads, then n x (4K + 12) + 10; at 4 MHz 4K + 12 = 4000.
        {"ATmega328P", "", "WaitMs 0", 12},
        {"ATmega328P", "", "WaitMs 3", 3 * 4000 + 12},
        // 1 MHz: K = 247, 4K + 12 = 1000.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 1\r\n", "WaitMs 2", 2 * 1000 + 12},
        // Limited set: n x (6K + 14) + 12; 1 MHz K = 164: 998 a millisecond; 4 MHz K = 664: 3998.
        {"ATtiny12", "Define CLOCK_FREQUENCY = 1\r\n", "WaitMs 2", 2 * 998 + 12},
        {"ATtiny12", "", "WaitMs 1", 3998 + 12},
        // WaitUs n < 256: p = value div step + 1 rounds of 4 cycles, and 4p + 10 in all.
        // 4 MHz, 10: value 1664, step 256: p = 7.
        {"ATmega328P", "", "WaitUs 10", 4 * 7 + 10},
        {"ATmega328P", "", "WaitUs 0", 4 * 1 + 10},
        // 255: value 64384: p = 252.
        {"ATmega328P", "", "WaitUs 255", 4 * 252 + 10},
        // 8 MHz, 100: value 25152, step 128: p = 197.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 8\r\n", "WaitUs 100", 4 * 197 + 10},
        // n from 256: 3 loads, p rounds of k + 5 cycles, p(k + 5) + 11 in all.
        // 8 MHz, 300: value 76192, step 256, k = 3: p = 298.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 8\r\n", "WaitUs 300", 298 * 8 + 11},
        // 4 MHz, 1000: value 254976, step 320, k = 0: p = 797.
        {"ATmega328P", "", "WaitUs 1000", 797 * 5 + 11},
        // 20 MHz, 256: value 65536 - 397 = 65139, step 256, k = 15: p = 255.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 20\r\n", "WaitUs 256", 255 * 20 + 11},
        // 10 MHz, 200: value 51200 - round(1.4 x 256 = 358.4) = 50842, step round(102.4) = 102:
        // p = 498 + 1 = 499.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 10\r\n", "WaitUs 200", 4 * 499 + 10},
        // 16 MHz, 1000: c = 27, value 256000 - 432 = 255568, k = 11, step 256: p = 998 + 1 = 999.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 16\r\n", "WaitUs 1000", 999 * 16 + 11},
        // 16 MHz, WaitMs: K = (16000 - 12) div 4 = 3997, 4K + 12 = 16000 a millisecond.
        {"ATmega328P", "Define CLOCK_FREQUENCY = 16\r\n", "WaitMs 2", 2 * 16000 + 12},
        // A Byte variable b = 10 in a register: MOV, RCALL, CLR, two LDI, 11 rounds, RET.
        {"ATmega328P", "Dim b As Byte\r\nb = 10\r\n", "WaitUs b", 1 + 3 + 1 + 2 + (4 * 11 - 1) + 4},
    };
    for (const auto& row : rows)
        EXPECT_EQ(cyclesof(row.model, row.before, row.statement), row.cycles)
            << row.model << ": " << row.before << row.statement;
}

// A clock of no whole megahertz, F = 3.6864 (single precision), Int(F) = 3: WaitMs counts with
// Int(F), the WaitUs forms with F itself, so the waits are off the clock by design.
TEST(BasicDelays, AFractionalClockUsesItsWholeMegahertzForMilliseconds) {
    const struct {
        const char* statement;
        uint64_t cycles;
    } rows[] = {
        // K = (3000 - 12) div 4 = 747, 4K + 12 = 3000 a millisecond at the compile's 3 MHz.
        {"WaitMs 2", 2 * 3000 + 12},
        // value 2560 - round(14 / 3.6864 x 256 = 972.2) = 1588, step round(277.8) = 278: p = 5 + 1.
        {"WaitUs 10", 4 * 6 + 10},
        // c = 16, value 76800 - round(1111.1) = 75689, k = 0, step round(347.2) = 347: p = 218 + 1.
        {"WaitUs 300", 219 * 5 + 11},
    };
    for (const auto& row : rows) EXPECT_EQ(cyclesof("ATmega328P", "", row.statement, 3.6864), row.cycles) << row.statement;
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

TEST(BasicDelays, Messages) {
    const std::pair<const char*, const char*> rows[] = {
        {"Dim f As Bit\r\nWaitMs f", ": Incorrect argument."},
        {"Dim f As Bit\r\nWaitUs f", ": Incorrect argument."},
        {"WaitUs 65536", ": Argument '65536' is not a valid Word type constant."},
        {"Dim b As Byte\r\nHigh b", ": Argument must be Bit data type."},
        {"Toggle 1", ": Argument must be Bit data type."},
        {"Dim b As Byte\r\nConfig b = Output", ": Port register or bit expected."},
        {"Config PINB.1 = Input", ": Port register or bit expected."},
    };
    for (const auto& [source, message] : rows) {
        const BasicCompileResult result = compilebasic(source);
        EXPECT_FALSE(result.ok) << source;
        EXPECT_NE(result.error.find(message), std::string::npos) << source << " gave " << result.error;
    }
}

}  // namespace
}  // namespace velmora::test
