// Adcin, Read, Write and the character LCD statements: the lines they generate, their routines
// by the model's kinds and the Define parameters, every message, and programs that convert,
// keep bytes in the EEPROM and write to a character LCD module on the simulated pins.

#include <sstream>

#include "basicfixture.h"
#include "devices/lcdheadless.h"
#include "devices/lcdpaint.h"

namespace velmora::test {
namespace {

const char kLcd2x16[] = "Define LCD_LINES = 2\r\nDefine LCD_CHARS = 16\r\n";

BasicCompileResult compilewith(const std::string& source, BasicModel model) {
    return basiccompile(source, model, CompileOptions{});
}

TEST(BasicPeripherals, StatementLines) {
    const std::string lcd = std::string(kLcd2x16) + "Lcdinit\r\n";
    const std::string lcd4 = "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 20\r\nLcdinit\r\n";
    const struct {
        const char* model;
        std::string before;
        const char* statement;
        const char* code;
    } rows[] = {
        // ATmega32: ADMUX holds ADLAR. The routine takes R30 and R31, so variables start lower.
        {"ATmega32", "Dim b As Byte\r\n", "Adcin 3, b", "SBI ADMUX,ADLAR|LDI R31,0x03|RCALL A001|IN R16,ADCH|MOV R29,R16"},
        {"ATmega32", "Dim w As Word\r\n", "Adcin 0, w",
         "CBI ADMUX,ADLAR|LDI R31,0x00|RCALL A001|IN R16,ADCL|MOV R28,R16|IN R16,ADCH|MOV R29,R16"},
        // ATmega328P: the ADC in the extended I/O space.
        {"ATmega328P", "Dim b As Byte\r\n", "Adcin 7, b",
         "LDS R16,ADMUX|SBR R16,0x20|STS ADMUX,R16|LDI R31,0x07|RCALL A001|LDS R16,ADCH|MOV R29,R16"},
        // ATtiny24: ADLAR in ADCSRB; a Long result gets R15 in its upper bytes (SRAM 0x60).
        {"ATtiny24", "Dim l As Long\r\n", "Adcin 1, l",
         "CBI ADCSRB,ADLAR|LDI R31,0x01|RCALL A001|IN R16,ADCL|STS 0x60,R16|IN R16,ADCH|STS 0x61,R16|STS 0x62,R15|"
         "STS 0x63,R15"},
        // An EEPROM of 1024 bytes takes the address's high byte too.
        {"ATmega32", "Dim b As Byte\r\n", "Read 1023, b", "LDI R16,0xFF|LDI R17,0x03|RCALL EE01|MOV R31,R18"},
        {"ATmega32", "Dim w As Word\r\n", "Write w, 200", "MOV R16,R30|MOV R17,R31|LDI R18,0xC8|RCALL EE02"},
        {"ATtiny13", "Dim w As Word\r\n", "Read 63, w", "LDI R16,0x3F|RCALL EE01|MOV R30,R18|MOV R31,R15"},
        // Lcdinit with the default wiring: data on PB4..PB7, RS PB3, E PB2; 100 ms, then the start.
        {"ATmega32", kLcd2x16, "Lcdinit LcdCurBlink",
         "CBI PORTB,3|CBI PORTB,2|SBI DDRB,3|SBI DDRB,2|IN R16,DDRB|ORI R16,0xF0|OUT DDRB,R16|LDI R24,0x64|"
         "LDI R25,0x00|RCALL W001|LDI R31,0x33|RCALL LC02|LDI R31,0x33|RCALL LC02|LDI R31,0x33|RCALL LC02|"
         "LDI R31,0x22|RCALL LC02|LDI R31,0x28|RCALL LC02|LDI R31,0x0D|RCALL LC02|LDI R31,0x01|RCALL LC02"},
        {"ATmega32",
         "Define LCD_BITS = 8\r\nDefine LCD_DREG = PORTC\r\nDefine LCD_RWREG = PORTD\r\nDefine LCD_RWBIT = 7\r\n",
         "Lcdinit 2",
         "CBI PORTB,3|CBI PORTB,2|CBI PORTD,7|SBI DDRB,3|SBI DDRB,2|SBI DDRD,7|SER R16|OUT DDRC,R16|LDI R24,0x64|"
         "LDI R25,0x00|RCALL W001|LDI R31,0x33|RCALL LC02|LDI R31,0x33|RCALL LC02|LDI R31,0x33|RCALL LC02|"
         "LDI R31,0x38|RCALL LC02|LDI R31,0x0E|RCALL LC02|LDI R31,0x01|RCALL LC02"},
        // A Long item sends its low two bytes only.
        {"ATmega32", lcd + "Dim b As Byte\r\nDim l As Long\r\n", "Lcdout \"A\", b, l",
         "LDI R31,0x41|RCALL LC01|MOV R31,R30|RCALL LC01|LDS R31,0x60|RCALL LC01|LDS R31,0x61|RCALL LC01"},
        {"ATmega32", lcd + "Dim w As Word\r\n", "Lcdout #w", "MOV R20,R29|MOV R21,R30|RCALL DC01|RCALL LC21"},
        {"ATmega32", lcd, "Lcdcmdout LcdShiftRight", "LDI R31,0x1C|RCALL LC02"},
        {"ATmega32", lcd, "Lcdcmdout LcdLine2Home", "LDI R31,0xC0|RCALL LC02"},
        {"ATmega32", lcd, "Lcdcmdout 0x40", "LDI R31,0x40|RCALL LC02"},
        {"ATmega32", lcd4, "Lcdcmdout LcdLine4Home", "LDI R31,0xD4|RCALL LC02"},
        // With LCD_CHARS 16, line 3's first place is 0x90; position 5 on line 4 is 0xD0 + 4.
        {"ATmega32", "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 16\r\nLcdinit\r\n", "Lcdcmdout LcdLine3Pos(1)",
         "LDI R31,0x90|RCALL LC02"},
        {"ATmega32", "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 16\r\nLcdinit\r\n", "Lcdcmdout LcdLine4Pos(5)",
         "LDI R31,0xD4|RCALL LC02"},
        // A variable position: minus one, the line's base, and 256 - 20 = 0xEC subtracted adds 20.
        {"ATmega32", lcd4 + "Dim p As Byte\r\n", "Lcdcmdout LcdLine3Pos(p)",
         "MOV R31,R30|DEC R31|ORI R31,0x80|SUBI R31,0xEC|RCALL LC02"},
        {"ATmega32", lcd, "Lcdcmdout LcdLine1Clear",
         "LDI R31,0x80|RCALL LC02|LDI R30,0x10|L0001: LDI R31,0x20|RCALL LC01|DEC R30|BRNE L0001|LDI R31,0x80|"
         "RCALL LC02"},
        {"ATmega32", lcd, "Lcddefchar 1, 0, 1, 2, 3, 4, 5, 6, 31",
         "LDI R31,0x48|RCALL LC02|LDI R31,0x00|RCALL LC01|LDI R31,0x01|RCALL LC01|LDI R31,0x02|RCALL LC01|"
         "LDI R31,0x03|RCALL LC01|LDI R31,0x04|RCALL LC01|LDI R31,0x05|RCALL LC01|LDI R31,0x06|RCALL LC01|"
         "LDI R31,0x1F|RCALL LC01|LDI R31,0x02|RCALL LC02"},
    };
    for (const auto& row : rows) {
        const BasicCompileResult result = compilebasic(row.before + row.statement + "\r\n", row.model);
        ASSERT_TRUE(result.ok) << row.statement << ": " << result.error;
        std::string code = rowcode(result, row.statement);
        EXPECT_EQ(code, row.code) << row.model << ": " << row.statement;
    }
}

TEST(BasicPeripherals, RoutinesFollowTheModelAndTheDefines) {
    const auto model = [](const char* name, int adc) {
        BasicModel m = basicmodel(name);
        if (adc) m.adcclass = adc;
        return m;
    };
    // X000 at 4 MHz for 20 us: 5120 - 896 = 4224 = 0x1080; for 1 us: 0.
    const std::string sample20 = "LDI R16,0x80|LDI R17,0x10|RCALL X000", pulse = "LDI R16,0x00|LDI R17,0x00|RCALL X000";
    const struct {
        BasicModel model;
        const char* source;
        const char* comment;
        std::string code;
    } rows[] = {
        {model("ATmega32", 0), "Dim b As Byte\r\nDefine ADC_VREF = 1\r\nDefine ADC_CLOCK = 5\r\nAdcin 0, b",
         "; Adcin Routine",
         "A001: ANDI R31,0x1F|ORI R31,0x40|IN R30,ADMUX|ANDI R30,0x20|OR R30,R31|OUT ADMUX,R30|LDI R30,0x95|"
         "OUT ADCSRA,R30|" + sample20 + "|SBI ADCSRA,ADSC|A002: SBIS ADCSRA,ADIF|RJMP A002|SBI ADCSRA,ADIF|"
         "CBI ADCSRA,ADEN|RET"},
        {model("ATtiny24", 0), "Dim b As Byte\r\nDefine ADC_VREF = 2\r\nAdcin 0, b", "; Adcin Routine",
         "A001: ANDI R31,0x3F|ORI R31,0x80|OUT ADMUX,R31|LDI R30,0x93|OUT ADCSRA,R30|" + sample20 +
             "|SBI ADCSRA,ADSC|A002: SBIS ADCSRA,ADIF|RJMP A002|SBI ADCSRA,ADIF|CBI ADCSRA,ADEN|RET"},
        // Reference 6: Int(6 / 4) x 16 + (6 mod 4) x 64 = 16 + 128 = 0x90.
        {model("ATtiny25", 0), "Dim b As Byte\r\nDefine ADC_VREF = 6\r\nAdcin 0, b", "; Adcin Routine",
         "A001: ANDI R31,0x0F|ORI R31,0x90|IN R30,ADMUX|ANDI R30,0x20|OR R30,R31|OUT ADMUX,R30|LDI R30,0x93|"
         "OUT ADCSRA,R30|" + sample20 + "|SBI ADCSRA,ADSC|A002: SBIS ADCSRA,ADIF|RJMP A002|SBI ADCSRA,ADIF|"
         "CBI ADCSRA,ADEN|RET"},
        {model("ATmega328P", 0), "Dim b As Byte\r\nDefine ADC_SAMPLEUS = 1\r\nAdcin 0, b", "; Adcin Routine",
         "A001: ANDI R31,0x1F|ORI R31,0x00|LDS R30,ADMUX|ANDI R30,0x20|OR R30,R31|STS ADMUX,R30|LDI R30,0x93|"
         "STS ADCSRA,R30|" + pulse + "|LDS R30,ADCSRA|SBR R30,0x40|STS ADCSRA,R30|A002: LDS R30,ADCSRA|"
         "SBRS R30,ADIF|RJMP A002|LDI R30,0x13|STS ADCSRA,R30|RET"},
        // The kinds no shipped model has: MUX5 through ADCSRB, and the old ADCSR without ADLAR.
        {model("ATmega32", 8), "Dim b As Byte\r\nDefine ADC_VREF = 5\r\nAdcin 0, b", "; Adcin Routine",
         "A001: IN R30,ADCSRB|BST R31,5|BLD R30,3|SBR R30,0x10|OUT ADCSRB,R30|ANDI R31,0x1F|ORI R31,0x40|"
         "IN R30,ADMUX|ANDI R30,0x20|OR R30,R31|OUT ADMUX,R30|LDI R30,0x93|OUT ADCSRA,R30|" + sample20 +
             "|SBI ADCSRA,ADSC|A002: SBIS ADCSRA,ADIF|RJMP A002|SBI ADCSRA,ADIF|CBI ADCSRA,ADEN|RET"},
        {model("ATmega32", 5), "Dim b As Byte\r\nAdcin 0, b", "; Adcin Routine",
         "A001: ANDI R31,0x07|OUT ADMUX,R31|LDI R30,0x93|OUT ADCSR,R30|" + sample20 +
             "|SBI ADCSR,ADSC|A002: SBIS ADCSR,ADIF|RJMP A002|SBI ADCSR,ADIF|CBI ADCSR,ADEN|RET"},
        {model("ATmega32", 0), "Dim b As Byte\r\nRead 0, b", "; EEPROM Access Routine",
         "EE01: OUT EEARL,R16|OUT EEARH,R17|SBI EECR,0|IN R18,EEDR|RET|EE02: OUT EECR,R15|OUT EEARL,R16|"
         "OUT EEARH,R17|OUT EEDR,R18|SBI EECR,2|SBI EECR,1|EE03: SBIC EECR,1|RJMP EE03|RET"},
        {model("ATtiny13", 0), "Dim b As Byte\r\nRead 0, b", "; EEPROM Access Routine",
         "EE01: OUT EEAR,R16|SBI EECR,0|IN R18,EEDR|RET|EE02: OUT EECR,R15|OUT EEAR,R16|OUT EEDR,R18|SBI EECR,2|"
         "SBI EECR,1|EE03: SBIC EECR,1|RJMP EE03|RET"},
        // Four lines on PB4..PB7, a fixed wait: 100 us = 25600 - 896 = 24704 = 0x6080.
        {model("ATmega32", 0), "Define LCD_LINES = 2\r\nDefine LCD_CHARS = 16\r\nLcdinit", "; Lcdout Routine",
         "LC01: SBI PORTB,3|IN R16,PORTB|ANDI R16,0x0F|MOV R17,R31|ANDI R17,0xF0|OR R16,R17|OUT PORTB,R16|"
         "RCALL LCX1|IN R16,PORTB|ANDI R16,0x0F|SWAP R31|MOV R17,R31|ANDI R17,0xF0|OR R16,R17|OUT PORTB,R16|"
         "RCALL LCX1|LDI R16,0x80|LDI R17,0x60|RCALL X000|RET|LCX1: SBI PORTB,2|" + pulse + "|CBI PORTB,2|" +
             pulse + "|RET"},
        // Eight lines, command wait 5000 us from Y000: 1280000 - 1024 = 0x1384 00.
        {model("ATmega32", 0), "Define LCD_BITS = 8\r\nDefine LCD_DREG = PORTC\r\nLcdinit", "; Lcdcmdout Routine",
         "LC02: CBI PORTB,3|OUT PORTC,R31|RCALL LCX1|LDI R16,0x00|LDI R17,0x84|LDI R18,0x13|RCALL Y000|RET"},
        // The low nibble polling the busy flag through R/W on PD6.
        {model("ATmega32", 0),
         "Define LCD_DBIT = 0\r\nDefine LCD_DREG = PORTC\r\nDefine LCD_RWREG = PORTD\r\nDefine LCD_RWBIT = 6\r\n"
         "Define LCD_READ_BUSY_FLAG = 1\r\nLcdinit",
         "; Lcdcmdout Routine",
         "LC02: CBI PORTB,3|CBI PORTD,6|IN R16,PORTC|ANDI R16,0xF0|SWAP R31|MOV R17,R31|ANDI R17,0x0F|OR R16,R17|"
         "OUT PORTC,R16|RCALL LCX1|IN R16,PORTC|ANDI R16,0xF0|SWAP R31|MOV R17,R31|ANDI R17,0x0F|OR R16,R17|"
         "OUT PORTC,R16|RCALL LCX1|CBI PORTB,3|SBI PORTD,6|IN R16,DDRC|ANDI R16,0xF0|OUT DDRC,R16|"
         "LC11: RCALL LCX2|MOV R30,R31|RCALL LCX2|SBRC R30,3|RJMP LC11|IN R16,DDRC|ORI R16,0x0F|OUT DDRC,R16|RET"},
    };
    for (const auto& row : rows) {
        const BasicCompileResult result = compilewith(std::string(row.source) + "\r\n", row.model);
        ASSERT_TRUE(result.ok) << row.source << ": " << result.error;
        EXPECT_EQ(routine(result, row.comment), row.code) << row.model.name << ": " << row.source;
    }
}

TEST(BasicPeripherals, Messages) {
    const std::string lcd = std::string(kLcd2x16) + "Lcdinit\r\n";
    const struct {
        const char* model;
        std::string source;
        const char* message;
    } rows[] = {
        {"AT90S8515", "Dim b As Byte\r\nAdcin 0, b",
         ": The selected microcontroller model does not feature A/D converter (ADC) module."},
        {"ATmega32", "Dim b As Byte\r\nAdcin 32, b", ": Invalid argument for ADC channel number."},
        {"ATtiny25", "Dim b As Byte\r\nAdcin 16, b", ": Invalid argument for ADC channel number."},
        {"ATmega32", "Dim f As Bit\r\nDim b As Byte\r\nAdcin f, b", ": Invalid argument for ADC channel number."},
        {"ATmega32", "Adcin 0, 5", ": Invalid argument for ADC result."},
        {"ATmega32", "Dim f As Bit\r\nAdcin 0, f", ": Invalid argument for ADC result."},
        {"ATmega32", "Dim f As Bit\r\nDim b As Byte\r\nRead f, b", ": Incorrect EEPROM address argument."},
        {"ATmega8", "Dim b As Byte\r\nRead 600, b", ": EEPROM address argument out of range."},
        {"ATmega32", "Read 0, 5", ": Incorrect EEPROM data argument."},
        {"ATmega32", "Dim f As Bit\r\nWrite 0, f", ": Incorrect EEPROM data argument."},
        {"ATmega32", "Lcdout \"A\"\r\nLcdinit", ": LCD module must be initialized first with LCDINIT statement."},
        {"ATmega32", lcd + "Lcdinit", ": LCDINIT statement may appear only once."},
        {"ATmega32", "Define LCD_LINES = 2\r\nLcdinit", ": Both LCD_LINES and LCD_CHARS parameters have to be defined."},
        {"ATmega32", std::string(kLcd2x16) + "Lcdinit 4", ": Incorrect argument."},
        {"ATmega32", lcd + "Dim f As Bit\r\nLcdout f", ": Incorrect argument."},
        {"ATmega32", lcd + "Lcdcmdout LcdLine3Home", ": Statement available for 4-line LCD modules only."},
        {"ATmega32", lcd + "Lcdcmdout LcdLine1Pos(41)", ": Incorrect cursor position argument."},
        {"ATmega32", lcd + "Dim l As Long\r\nLcdcmdout LcdLine1Pos(l)", ": Incorrect cursor position argument."},
        {"ATmega32", lcd + "Dim w As Word\r\nLcdcmdout w", ": Incorrect argument."},
        {"ATmega32", lcd + "Lcddefchar 8, 0, 0, 0, 0, 0, 0, 0, 0", ": Incorrect argument."},
        {"ATmega32", lcd + "Lcddefchar 0, 0, 0, 0, 0, 0, 0, 0, 32", ": Incorrect argument."},
        {"ATmega32", lcd + "Lcddefchar 0, 0, 0, 0, 0, 0, 0, 0, 0, 0", ": Too many arguments."},
        {"ATmega32", lcd + "Lcddefchar 0, 0, 0", ": Too few arguments."},
    };
    for (const auto& row : rows) {
        const BasicCompileResult result = compilebasic(row.source, row.model);
        EXPECT_FALSE(result.ok) << row.source;
        EXPECT_NE(result.error.find(row.message), std::string::npos) << row.source << " gave " << result.error;
    }
    // Every shipped model has an EEPROM.
    BasicModel noeeprom = basicmodel("ATmega32");
    noeeprom.eeclass = 1;
    EXPECT_NE(compilewith("Dim b As Byte\r\nRead 0, b", noeeprom)
                  .error.find(": The selected microcontroller model does not feature EEPROM data memory."),
              std::string::npos);
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

// Programs that write to a character LCD module on the default pins (data PB4..PB7, RS PB3,
// E PB2) or as their Defines say; the module shows what the text says.
TEST(BasicPeripherals, LcdStatementsOnTheModule) {
    const struct {
        const char* name;
        const char* wiring;
        std::string source;
        std::vector<std::string> rows;
    } rows[] = {
        {"four lines, fixed waits", "2x16",
         std::string(kLcd2x16) +
             "Dim n As Word\r\nn = 1234\r\nLcdinit\r\nLcdout \"Hello\"\r\nLcdcmdout LcdLine2Home\r\n"
             "Lcdout \"n=\", #n, 33\r\nEnd\r\n",
         {"Hello           ", "n=1234!         "}},
        {"low nibble on PORTC, busy flag polled", "2x16,d=PORTC.0,rw=PORTB.1",
         std::string(kLcd2x16) +
             "Define LCD_DBIT = 0\r\nDefine LCD_DREG = PORTC\r\nDefine LCD_RWREG = PORTB\r\nDefine LCD_RWBIT = 1\r\n"
             "Define LCD_READ_BUSY_FLAG = 1\r\nDim l As Long\r\nl = 4000000000\r\nLcdinit 1\r\nLcdout \"Poll\"\r\n"
             "Lcdcmdout LcdLine2Pos(3)\r\nLcdout #l\r\nEnd\r\n",
         {"Poll            ", "  4000000000    "}},
        {"eight lines on PORTC, four rows, clears", "4x20,d=PORTC,8bit,rs=PORTD.4,e=PORTD.5",
         "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 20\r\nDefine LCD_DREG = PORTC\r\nDefine LCD_BITS = 8\r\n"
         "Define LCD_RSREG = PORTD\r\nDefine LCD_RSBIT = 4\r\nDefine LCD_EREG = PORTD\r\nDefine LCD_EBIT = 5\r\n"
         "Dim p As Byte\r\np = 18\r\nLcdinit\r\nLcdout \"first\"\r\nLcdcmdout LcdLine3Home\r\nLcdout \"third\"\r\n"
         "Lcdcmdout LcdLine4Pos(p)\r\nLcdout \"end\"\r\nLcdcmdout LcdLine1Clear\r\nLcdout \"1\"\r\nEnd\r\n",
         {"1                   ", "                    ", "third               ", "                 end"}},
    };
    for (const auto& row : rows) {
        BasicRun run(row.source, "ATmega32", BasicRun::NotStarted{}, 20000000);
        std::string error;
        const auto lcd = attachlcd(run.m, row.wiring, error);
        ASSERT_TRUE(lcd) << error;
        run.start();
        EXPECT_FALSE(lcd->error) << row.name;
        EXPECT_EQ(lcdtextrows(lcd->state, lcd->config.lines, lcd->config.chars), row.rows) << row.name;
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

}  // namespace
}  // namespace velmora::test
