// How rows are read: the line cleaner's spelling and spacing, the place in the chain that
// takes each statement shape, and the one-line If's cut-down chain.

#include "basic/dispatch.h"
#include "basic/linecleaner.h"
#include "basic/symbols.h"
#include "basic/tokens.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

TEST(BasicLineCleaner, SpellsSpacesAndKeepsStringsAndComments) {
    const KeywordSpelling spelling(basickeywordsfor(basicmodel("ATmega32")));
    const std::pair<const char*, const char*> cases[] = {
        {"  dim   COUNTER as byte", "Dim counter As Byte"},
        {"x=a+b*2", "x = a + b * 2"},
        {"IF a<>b THEN goto Done", "If a <> b Then Goto done"},
        {"if a<=1 then x=1 else x=2", "If a <= 1 Then x = 1 Else x = 2"},
        {"for i=10 to 0 step -2", "For i = 10 To 0 Step -2"},
        {"x = y - 1", "x = y - 1"},
        {"Hserout \"Hello,  World\" ,CrLf", "Hserout \"Hello,  World\", CrLf"},
        {"portb.pb3 = 1", "PORTB.PB3 = 1"},
        {"x.lb=adcsra.aden", "x.LB = ADCSRA.ADEN"},
        {"shiftleft(a,2)", "ShiftLeft(a, 2)"},
        {"1WIREINIT", "1wireInit"},
        {"x = $FF + 0x1F", "x = $FF + 0x1F"},
        {"a = b 'Keep  THIS = as typed", "a = b 'Keep  THIS = as typed"},
        {"asm:   LD  R16 , X+", "ASM: LD R16 , X+"},
        {"Again:  asm:  ldi r16,Count", "again: ASM: ldi r16,Count"},
        {"Loop:\tHalt", "loop: Halt"},
        {"\t ", ""},
    };
    for (const auto& [row, expected] : cases) EXPECT_EQ(cleanbasicline(row, spelling), expected) << row;
}

TEST(BasicDispatch, EachShapeReachesItsPlaceInTheChain) {
    const std::pair<const char*, int> cases[] = {
        {"Reserve 0x60", 1}, {"Dim a As Byte @ 0x60", 2}, {"Dim a As Bit", 3}, {"Dim a(4) As Word", 3},
        {"Symbol s = PORTB.0", 4}, {"Const c = 5", 5}, {"Define LCD_BITS = 8", 6}, {"ASM: NOP", 7},
        {"x = ShiftLeft(a, 2)", 8}, {"x = Sqr(a)", 9}, {"x = Pointer(a)", 10}, {"Pointer(a) = x", 11},
        {"x = LookUp(1, 2, 3), i", 12}, {"x = Not y", 13}, {"x = a Nand b", 14}, {"x = y", 15},
        {"x = a + 1", 16}, {"x = a(1) + b", 16}, {"x = a Mod b", 16}, {"x = (a + 1)", 17}, {"x = a + b * c", 17}, {"High PORTB.0", 18},
        {"Toggle led", 18}, {"While a", 19}, {"While Not a", 19}, {"Wend", 19}, {"While a = 1 Or b = 2", 20},
        {"While a = 1 And b = 2", 21}, {"If a Then", 22}, {"If Not a Then", 22}, {"If a = 1 Or b = 2 Then", 23},
        {"If a = 1 Then x = b Or c", 24}, {"If a = 1 And b = 2 Then Goto x", 24}, {"Else", 25}, {"Endif", 25},
        {"Select Case x", 26}, {"Case 1, 2", 26}, {"Case Else", 26}, {"EndSelect", 26}, {"For i = 1 To 10", 27},
        {"For i = 10 To 0 Step -2", 27}, {"Next i", 28}, {"Goto x", 28}, {"Gosub x", 28}, {"Return", 28},
        {"End", 28}, {"Halt", 28}, {"Break", 28}, {"WaitMs 10", 29}, {"Lcdout \"a\"", 29}, {"Serout a, b, c", 29},
        {"DS18S20ReadT a, b", 29}, {"Count a, b, c", 29}, {"On Interrupt INT0", 30}, {"Resume", 30},
        {"Enable", 30}, {"Disable INT0", 30}, {"Proc p(a As Byte)", 31}, {"Function f(a As Byte) As Word", 31},
        {"Exit", 31}, {"End Proc", 31}, {"End Function", 31}, {"Call p(1)", 31}, {"StartFromZero", 32},
        {"Config PORTB = Output", 32},
        // Shapes no rule takes.
        {"If a = 1 And b = 2 Or c = 3 Then", 0}, {"If a Then Goto x Then", 0}, {"Dim a As Integer", 0},
        {"Next", 0}, {"Goto", 0}, {"End Select", 0}, {"Reserve", 0}, {"Config PORTB = Analog", 0}, {"Hello", 0},
    };
    for (const auto& [row, rule] : cases) EXPECT_EQ(chainrule(row), rule) << row;
}

TEST(BasicDispatch, OneLineIfTakesOnlyItsStatements) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega32");
    loadsystemsymbols(ctx);
    ctx.rows.resize(3);
    ctx.rows[2].username = "there";
    ctx.rows[2].label = "L0009";
    const std::pair<const char*, const char*> cases[] = {
        {"Goto there", ""},
        {"Break", ""},
        {"For i = 1 To 2", ": Invalid statement in IF THEN line."},
        {"End", ": Invalid statement in IF THEN line."},
        {"Dim a As Byte", ": Invalid statement in IF THEN line."},
        {"Goto", ": Syntax error."},
        {"PORTB = 1", ""},
        {"WaitMs 10", ""},
        {"I2CStart", ": This statement is not supported yet by this version of the compiler."},
    };
    for (const auto& [statement, error] : cases) {
        ctx.error.clear();
        EXPECT_EQ(dispatchthen(ctx, statement), *error == 0) << statement;
        EXPECT_EQ(ctx.error, error) << statement;
    }
}

TEST(BasicDispatch, NextArgumentTakesQuotedTextsWhole) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"a, b, c", "a", "b, c"},
        {"\"x, y\" , b", "\"x, y\"", "b"},
        {"\"x, y\"", "\"x, y\"", ""},
        {"single", "single", ""},
        {"\"open, b", "\"open", "b"},
    };
    for (const auto& [list, argument, rest] : cases) {
        std::string text = list;
        EXPECT_EQ(nextargument(text), argument) << list;
        EXPECT_EQ(text, rest) << list;
    }
}

}  // namespace
}  // namespace velmora::test
