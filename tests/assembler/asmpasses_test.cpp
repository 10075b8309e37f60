// Source handling: the preprocessor, labels, directives, the predefined symbols and the
// messages and error count of both passes.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asmpreprocess.h"

namespace velmora::test {
namespace {

int32_t symbol(const AsmContext& ctx, const std::string& name) {
    const int index = asmlookup(ctx, name);
    return index == 0 ? -12345 : asmsymbolvalue(ctx, index);
}

// The source's lines that carry an error, with their texts.
std::vector<std::pair<int, std::string>> errors(const AsmContext& ctx) {
    std::vector<std::pair<int, std::string>> found;
    for (size_t i = 0; i < ctx.lines.size(); ++i)
        if (ctx.lines[i].errorflag) found.emplace_back(static_cast<int>(i) + 1, ctx.lines[i].errortext);
    return found;
}

using Errors = std::vector<std::pair<int, std::string>>;

TEST(AsmPreprocess, ForeignDirectivesAreRemovedWithANotice) {
    const std::pair<const char*, const char*> cases[] = {
        {".include \"m8def.inc\"", ";Line removed by AVR Assembler preprocessor: .include \"m8def.inc\""},
        {"\t.INCLUDE \"x.inc\" ; defs", ";Line removed by AVR Assembler preprocessor: \t.INCLUDE \"x.inc\" ; defs"},
        {" .cseg", ";Line removed by AVR Assembler preprocessor:  .cseg"},
        {" .exit", ";Line removed by AVR Assembler preprocessor:  .exit"},
        {".LIST", ";Line removed by AVR Assembler preprocessor: .LIST"},
        {" .nolist", ";Line removed by AVR Assembler preprocessor:  .nolist"},
        // the word counts anywhere in the text, but not inside the comment
        {"start: nop .listing", ";Line removed by AVR Assembler preprocessor: start: nop .listing"},
        {" nop ; .include", " nop ; .include"},
    };
    for (const auto& [line, expected] : cases) EXPECT_EQ(asmpreprocess(line), expected) << line;
}

TEST(AsmPreprocess, FunctionsBecomePrefixesAndSetAndDefBecomeEqu) {
    const std::pair<const char*, const char*> cases[] = {
        {" ldi r16,low(RAMEND) ; set",
         " ldi r16,low RAMEND ;Line modified by AVR Assembler preprocessor (LOW function replaced with LOW prefix): "
         " ldi r16,low(RAMEND) ; set"},
        {"\tLDI\tR17,HIGH(RAMEND)",
         " LDI R17,high RAMEND ;Line modified by AVR Assembler preprocessor (HIGH function replaced with HIGH "
         "prefix): \tLDI\tR17,HIGH(RAMEND)"},
        // only the first call of one kind is rewritten; LOW wins over HIGH
        {" .DB low(1),HIGH(2)",
         " .DB low 1,HIGH(2) ;Line modified by AVR Assembler preprocessor (LOW function replaced with LOW "
         "prefix):  .DB low(1),HIGH(2)"},
        {" .set  X = 5", " .equ X = 5 ;Line modified by AVR Assembler preprocessor (.SET replaced with .EQU):  .set  X = 5"},
        {".DEF temp = R16", ".equ temp = R16 ;Line modified by AVR Assembler preprocessor (.DEF replaced with .EQU): "
                            ".DEF temp = R16"},
        // without its parenthesis a function is left alone
        {" ldi r16,low(5", " ldi r16,low(5"},
        {" nop", " nop"},
        {"", ""},
    };
    for (const auto& [line, expected] : cases) EXPECT_EQ(asmpreprocess(line), expected) << line;
}

TEST(AsmPreprocess, RewrittenLinesAssemble) {
    const AsmContext ctx = assemble(
        " .include \"m8def.inc\"\n"
        " ldi r16,low(RAMEND)\n"
        " ldi r17,HIGH(RAMEND) ; comment\n"
        ".DEF temp = R20\n"
        " .SET LIMIT = 7\n"
        " ldi temp,LIMIT\n"
        " ldi r18,low($1234)+high($1234)\n");
    EXPECT_EQ(errors(ctx), (Errors{{7, "Invalid argument of the instruction."}}));
    EXPECT_EQ(opcodewords(ctx.lines[1].opcode).at(0), 0xE50F);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode).at(0), 0xE014);
    EXPECT_EQ(symbol(ctx, "TEMP"), 20);
    EXPECT_EQ(opcodewords(ctx.lines[5].opcode).at(0), 0xE047);
    EXPECT_EQ(ctx.lines[0].location, 0);
    EXPECT_EQ(ctx.lines[2].location, 1);
}

TEST(AsmLabels, ColumnOneDecides) {
    const AsmContext ctx = assemble(
        "START: LDI R16,$FF\n"  // 1: label with a colon
        "LOOP NOP\n"            // 2: the colon is optional
        "_under:\n"             // 3: a label alone
        "\tNOP\n"               // 4: a tab indents
        "ADD R1,R2\n"           // 5: a label ADD and the mnemonic R1,R2
        "LOOP2:RJMP LOOP\n"     // 6: the label LOOP2:RJMP, the mnemonic LOOP
        "1 NOP\n"               // 7: no label starts with a digit
        "   \n"                 // 8
        "; only a comment\n"    // 9
        " RJMP ADD\n");         // 10
    EXPECT_EQ(errors(ctx), (Errors{{5, "Unrecognized instruction."}, {6, "Unrecognized instruction."},
                                   {7, "Unrecognized instruction."}}));
    EXPECT_EQ(symbol(ctx, "START"), 0);
    EXPECT_EQ(symbol(ctx, "LOOP"), 1);
    EXPECT_EQ(symbol(ctx, "_UNDER"), 2);
    EXPECT_EQ(symbol(ctx, "ADD"), 3);
    EXPECT_EQ(symbol(ctx, "LOOP2:RJMP"), 3);
    EXPECT_EQ(ctx.lines[0].mnemonic, "LDI");
    EXPECT_EQ(ctx.lines[0].arg1, "R16");
    EXPECT_EQ(ctx.lines[0].arg2, "$FF");
    EXPECT_EQ(ctx.lines[4].mnemonic, "R1,R2");
    EXPECT_EQ(ctx.lines[9].location, 3);
    EXPECT_EQ(opcodewords(ctx.lines[9].opcode).at(0), 0xCFFF);  // RJMP ADD: 3 - 3 - 1 = -1
}

TEST(AsmLabels, LengthLimitAndDuplicates) {
    const std::string name32(32, 'A');
    const AsmContext ctx = assemble(
        name32 + ": NOP\n" +           // 1
        name32 + "B NOP\n" +           // 2: 33 characters
        "R5: NOP\n"                    // 3: register names are symbols
        "PORTB: NOP\n"                 // 4: so are the model's names
        "ramend:\n"                    // 5
        "twice: NOP\n"                 // 6
        "TWICE: .ORG $100\n"           // 7: the rest of the line is ignored
        " NOP\n");                     // 8
    EXPECT_EQ(errors(ctx), (Errors{{2, "Labels can't be longer than 32 characters."},
                                   {3, "Duplicate label."},
                                   {4, "Duplicate label."},
                                   {5, "Duplicate label."},
                                   {7, "Duplicate label."}}));
    EXPECT_EQ(ctx.asmerrors, 5);
    EXPECT_EQ(symbol(ctx, name32), 0);
    EXPECT_EQ(symbol(ctx, "TWICE"), 1);
    EXPECT_EQ(ctx.lines[6].mnemonic, "");
    EXPECT_EQ(ctx.lines[7].location, 2);
    EXPECT_EQ(symbol(ctx, "R5"), 5);
}

TEST(AsmDirectives, Org) {
    const AsmContext ctx = assemble(
        " NOP\n"              // 1: 0
        "HERE: .ORG $10\n"    // 2: HERE keeps 1
        " NOP\n"              // 3: $10
        " .ORG HERE+2\n"      // 4: earlier labels serve
        " NOP\n"              // 5: 3
        " .org $+5\n"         // 6: 4 + 5
        " NOP\n"              // 7: 9
        " .ORG PORTB\n"       // 8: and predefined symbols
        " NOP\n"              // 9: $18
        " .ORG LATER\n"       // 10: a label further down is unknown
        " .ORG K\n"           // 11: no .EQU of the source is known in pass 1
        " .ORG -1\n"          // 12
        " .ORG $1000000\n"    // 13
        " .ORG\n"             // 14
        " .ORG 1,2\n"         // 15
        " .ORG $FFFFFF\n"     // 16
        "LATER: NOP\n"        // 17
        " .EQU K = 1\n");     // 18
    EXPECT_EQ(errors(ctx), (Errors{{10, "Invalid argument of the .ORG directive."},
                                   {11, "Invalid argument of the .ORG directive."},
                                   {12, "Invalid argument of the .ORG directive."},
                                   {13, "Invalid argument of the .ORG directive."},
                                   {14, "Invalid argument."},
                                   {15, "Invalid argument."}}));
    EXPECT_EQ(symbol(ctx, "HERE"), 1);
    const int32_t locations[] = {0, 1, 0x10, 0x11, 3, 4, 9, 10, 0x18, 0x19};
    for (size_t i = 0; i < 10; ++i) EXPECT_EQ(ctx.lines[i].location, locations[i]) << i + 1;
    EXPECT_EQ(symbol(ctx, "LATER"), 0xFFFFFF);
}

TEST(AsmDirectives, BackwardOrgOverwritesAnEarlierLine) {
    const AsmContext ctx = assemble(" NOP\n NOP\n .ORG 0\n RET\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(ctx.lines[3].location, 0);
}

TEST(AsmDirectives, Equ) {
    const AsmContext ctx = assemble(
        " LDI R16,K\n"            // 1: used above its definition
        " .EQU K = 5\n"           // 2
        " .equ Mixed=K*2\n"       // 3
        " LDI R16,mixed\n"        // 4
        " .EQU K = 6\n"           // 5
        " .EQU R5 = 1\n"          // 6
        " .EQU LBL = 1\n"         // 7: labels are known from pass 1
        "LBL: .EQU NOEQUALS\n"    // 8
        " .EQU BAD = nonsense\n"  // 9
        " .EQU TWO = 1, 2\n"      // 10
        " .EQU\n"                 // 11
        " .EQU BIG = 999999999\n" // 12
        " .SET K = 7\n"           // 13: .SET is .EQU, so no redefinition either
        " .EQU NEG = -4\n");      // 14
    EXPECT_EQ(errors(ctx), (Errors{{1, "Invalid argument of the instruction."},
                                   {5, "Duplicate label name."},
                                   {6, "Duplicate label name."},
                                   {7, "Duplicate label name."},
                                   {8, "Incorrect syntax of the .EQU directive."},
                                   {9, "Invalid argument of the .EQU directive."},
                                   {10, "Invalid argument."},
                                   {11, "Invalid argument."},
                                   {13, "Duplicate label name."}}));
    EXPECT_EQ(symbol(ctx, "K"), 5);
    EXPECT_EQ(symbol(ctx, "MIXED"), 10);
    EXPECT_EQ(symbol(ctx, "BIG"), 999999999);
    EXPECT_EQ(symbol(ctx, "NEG"), -4);
    EXPECT_EQ(opcodewords(ctx.lines[3].opcode).at(0), 0xE00A);
    // A .EQU takes no room.
    EXPECT_EQ(ctx.lines[4].location, 2);
}

TEST(AsmDirectives, DbPacksBytesIntoWords) {
    const AsmContext ctx = assemble(
        " .DB 1,2,3\n"              // 1: two words, the last high byte 0
        " .DB \"AB\",0\n"           // 2: a string of two or more characters is a list
        " .db 'xyz'\n"              // 3
        " .DB \"A\",'B'\n"          // 4: a single quoted character stays one element
        " .DB ',',1\n"              // 5: the comma literal
        " .DB 1 , ','\n"            // 6
        " .DB $FF,0,low $1234\n"    // 7
        " .DB 1+1\n"                // 8
        " NOP\n");                  // 9
    EXPECT_EQ(ctx.asmerrors, 0);
    const char* opcodes[] = {"01020300", "41420000", "78797A00", "4142", "2C01", "012C", "FF003400", "0200"};
    for (size_t i = 0; i < 8; ++i) EXPECT_EQ(ctx.lines[i].opcode, opcodes[i]) << i + 1;
    const int32_t locations[] = {0, 2, 4, 6, 7, 8, 9, 11, 12};
    for (size_t i = 0; i < 9; ++i) EXPECT_EQ(ctx.lines[i].location, locations[i]) << i + 1;
    EXPECT_EQ(ctx.lines[1].arg1, "'A', 'B', 0");
    EXPECT_EQ(ctx.lines[5].arg1, "1,','");
}

TEST(AsmDirectives, DbLimitsAndRefusals) {
    const std::string sixteen = "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16";
    const AsmContext ctx = assemble(
        " .DB " + sixteen + "\n" +           // 1
        " .DB " + sixteen + ",17\n" +        // 2: reserves nothing
        " .DB \"ABCDEFGHIJKLMNOPQ\"\n" +     // 3: 17 after expansion
        " .DB 256\n"                         // 4
        " .DB 1,-1\n"                        // 5
        " .DB \"A,B\"\n"                     // 6: a comma breaks the string
        " .DB 1,\n"                          // 7: an empty element
        " .DB\n"                             // 8
        " .DB UNKNOWN\n"                     // 9
        " NOP\n");                           // 10
    EXPECT_EQ(errors(ctx), (Errors{{2, "Invalid argument of the .DB directive."},
                                   {3, "Invalid argument of the .DB directive."},
                                   {4, "Invalid argument of the .DB directive."},
                                   {5, "Invalid argument of the .DB directive."},
                                   {6, "Invalid argument of the .DB directive."},
                                   {7, "Invalid argument of the .DB directive."},
                                   {8, "Invalid argument."},
                                   {9, "Invalid argument of the .DB directive."}}));
    EXPECT_EQ(ctx.lines[0].opcode.size(), 32u);
    EXPECT_EQ(ctx.lines[1].location, 8);
    EXPECT_EQ(ctx.lines[2].location, 8);
    EXPECT_EQ(ctx.lines[3].location, 8);
    // A refused list keeps the room that pass 1 gave it.
    EXPECT_EQ(ctx.lines[4].location, 9);
    EXPECT_EQ(ctx.lines[5].location, 10);
    EXPECT_EQ(ctx.lines[4].opcode, "");
}

TEST(AsmDirectives, Dw) {
    const AsmContext ctx = assemble(
        "L: .DW 1,$FFFF,L\n"   // 1: three words
        " .DW \"AB\"\n"        // 2
        " .DW ','\n"           // 3
        " .DW ',',1\n"         // 4: plain comma splitting breaks the literal
        " .DW 65536\n"         // 5
        " .DW -1\n"            // 6
        " .DW 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17\n"  // 7
        " NOP\n");             // 8
    EXPECT_EQ(errors(ctx), (Errors{{4, "Invalid argument of the .DW directive."},
                                   {5, "Invalid argument of the .DW directive."},
                                   {6, "Invalid argument of the .DW directive."},
                                   {7, "Invalid argument of the .DW directive."}}));
    EXPECT_EQ(ctx.lines[0].opcode, "0100FFFF0000");
    EXPECT_EQ(ctx.lines[1].opcode, "41004200");
    EXPECT_EQ(ctx.lines[2].opcode, "2C00");
    const int32_t locations[] = {0, 3, 5, 6, 8, 9, 10, 10};
    for (size_t i = 0; i < 8; ++i) EXPECT_EQ(ctx.lines[i].location, locations[i]) << i + 1;
}

TEST(AsmDirectives, EndEndsNothingAndForeignDirectivesAreUnknown) {
    const AsmContext ctx = assemble(
        " .END\n"
        " NOP\n"
        " .END 1\n"
        " .BYTE 1\n"
        " .DSEG\n"
        " .ESEG\n"
        " .DEVICE ATmega8\n"
        " .cseg\n"
        " FOO R1\n");
    EXPECT_EQ(errors(ctx), (Errors{{3, "Invalid argument."},
                                   {4, "Unrecognized instruction."},
                                   {5, "Unrecognized instruction."},
                                   {6, "Unrecognized instruction."},
                                   {7, "Unrecognized instruction."},
                                   {9, "Unrecognized instruction."}}));
    EXPECT_EQ(ctx.lines[1].opcode, "0000");
}

TEST(AsmPredefined, ModelDefinitionsRegistersAndRamend) {
    AsmModel model = smallmodel();
    model.extendedio = 160;
    model.definitiontext.push_back(".equ WIDE = $12345");
    model.definitiontext.push_back(".equ LOWER = 3   ; trailing");
    const AsmContext ctx = assemble("", model);
    EXPECT_EQ(symbol(ctx, "PORTB"), 0x18);
    EXPECT_EQ(symbol(ctx, "DDRB"), 0x17);
    EXPECT_EQ(symbol(ctx, "SPL"), 0x3D);
    EXPECT_EQ(symbol(ctx, "SREG_I"), 7);
    EXPECT_EQ(symbol(ctx, "lower"), 3);
    EXPECT_EQ(symbol(ctx, "NOTEQU"), -12345);  // not a .EQU line
    EXPECT_EQ(symbol(ctx, "BROKEN"), -12345);  // no "="
    EXPECT_EQ(symbol(ctx, "WIDE"), kNotANumber16);  // read by the 16-bit reader
    for (int r = 0; r < 32; ++r) EXPECT_EQ(symbol(ctx, "R" + std::to_string(r)), r);
    const char* halves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(symbol(ctx, halves[i]), 26 + i);
    EXPECT_EQ(symbol(ctx, "RAMEND"), 1024 + 160 + 96 - 1);
    EXPECT_EQ(symbol(ctx, "X"), -12345);
    // The model's lines come first, in their order.
    EXPECT_EQ(ctx.symbols.front().name, "UDR");
    EXPECT_EQ(ctx.symbols.back().name, "RAMEND");
}

TEST(AsmPredefined, ANameOfTheModelIsUsableInEveryOperand) {
    const OneLine one = assembleline("OUT PORTB,R16");
    EXPECT_EQ(one.words(), std::vector<uint16_t>{0xBB08});
    EXPECT_EQ(assembleline("SBI DDRB,SREG_I").words(), std::vector<uint16_t>{0x9ABF});
}

TEST(AsmErrors, EveryFailedCheckCountsAndAFlaggedLineStaysOut) {
    const AsmContext ctx = assemble(
        " LDI R15,256\n"  // two failed checks, one message
        " BOGUS\n"
        " NOP\n");
    EXPECT_EQ(ctx.asmerrors, 3);
    EXPECT_EQ(errors(ctx).size(), 2u);
    EXPECT_EQ(ctx.lines[2].location, 1);
}

TEST(AsmErrors, AnEmptySourceHasNoLinesAndNoErrors) {
    const AsmContext ctx = assemble("");
    EXPECT_TRUE(ctx.lines.empty());
    EXPECT_EQ(ctx.asmerrors, 0);
}

}  // namespace
}  // namespace velmora::test
