// Operand texts to type and address, for every form an operand can take.
//
// How rows are read: the line cleaner's spelling and spacing, the place in the chain that
// takes each statement shape, and the one-line If's cut-down chain.

#include <map>

#include "basic/declarations.h"
#include "basic/dispatch.h"
#include "basic/linecleaner.h"
#include "basic/symbols.h"
#include "basic/tokens.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

struct Declared {
    CompileContext ctx;
    explicit Declared(bool arbitrarybits = false) {
        ctx.model = &basicmodel("ATmega32");
        ctx.options.allowarbitrarybitnames = arbitrarybits;
        ctx.rows.resize(1);
        preparememory(ctx);  // first sweep: everything in SRAM from 0x60
        loadsystemsymbols(ctx);
        declarevariable(ctx, "b", "Byte");     // 0x60
        declarevariable(ctx, "w", "Word");     // 0x61
        declarevariable(ctx, "l", "Long");     // 0x63
        declarearray(ctx, "a(10)", "Byte");    // 0x67
        declarearray(ctx, "v(4)", "Word");     // 0x71
        declarevariable(ctx, "flags", "Byte");  // 0x79
    }
};

TEST(BasicSymbols, OperandFormsGiveTypeAndAddress) {
    const Declared d;
    EXPECT_TRUE(d.ctx.error.empty()) << d.ctx.error;
    const std::map<std::string, int> types = {{"Byte", kTypeByte},     {"Word", kTypeWord},
                                              {"Long", kTypeLong},     {"Bit", kTypeBit},
                                              {"None", kTypeNone},     {"ByteIndexed", kTypeByteIndexed},
                                              {"WordIndexed", kTypeWordIndexed}};
    for (const TableRow& row : statementrows("Symbols: operands")) {
        EXPECT_EQ(symboltype(d.ctx, row[0]), types.at(row[1])) << row.where;
        EXPECT_EQ(symboladdress(d.ctx, row[0]), row.number(2)) << row.where;
    }
}

TEST(BasicSymbols, OfficialBitNamesOnAnyByteOnlyWithTheSetting) {
    const Declared d(true);
    EXPECT_EQ(symboltype(d.ctx, "flags.ADEN"), kTypeBit);
    EXPECT_EQ(symboladdress(d.ctx, "flags.ADEN"), 0x79 * 100 + 7);
}

TEST(BasicSymbols, ConstantCheckersRangeAndReplace) {
    Declared d;
    d.ctx.constants.push_back({"big", "70000"});
    d.ctx.constants.push_back({"one", "1"});
    const std::tuple<bool (*)(CompileContext&, std::string&), const char*, const char*> cases[] = {
        {constantbit, "TRUE", "1"},   {constantbit, "false", "0"}, {constantbit, "one", "1"}, {constantbit, "2", nullptr},
        {constantbyte, "$FF", "255"}, {constantbyte, "256", nullptr}, {constantbyte, "'A'", "65"},
        {constantword, "65535", "65535"}, {constantword, "big", nullptr}, {constantword, "%101", "5"},
        {constantlong, "big", "70000"}, {constantlong, "4294967295", "4294967295"},
        {constantlong, "4294967296", nullptr}, {constantlong, "-1", nullptr},
    };
    for (const auto& [check, text, expected] : cases) {
        std::string value = text;
        d.ctx.error.clear();
        EXPECT_EQ(check(d.ctx, value), expected != nullptr) << text;
        if (expected) {
            EXPECT_EQ(value, expected) << text;
        } else {
            EXPECT_NE(d.ctx.error.find("'" + std::string(text) + "' is not a valid"), std::string::npos) << text;
        }
    }
}

TEST(BasicSymbols, PortsOfTheExtendedSpaceWarn) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega128");
    EXPECT_TRUE(isport(ctx, 0x38));   // PORTB
    EXPECT_FALSE(isport(ctx, 0x37));  // DDRB
    EXPECT_EQ(portletter(ctx, 0x38), "B");
    EXPECT_TRUE(ctx.warnings.empty());
    EXPECT_FALSE(isport(ctx, 0x62));  // PORTF
    ASSERT_EQ(ctx.warnings.size(), 1u);
    EXPECT_TRUE(ctx.warnings[0].starts_with("PORT registers mapped in the extended I/O space can not be used\n"));
    EXPECT_EQ(portletter(ctx, 0x62), "F");
    EXPECT_EQ(portletter(ctx, 0x60), "X");
}

TEST(BasicLineCleaner, SpellsSpacesAndKeepsStringsAndComments) {
    const KeywordSpelling spelling(basickeywordsfor(basicmodel("ATmega32")));
    for (const TableRow& row : statementrows("Line cleaner"))
        EXPECT_EQ(cleanbasicline(row[0], spelling), row[1]) << row.where;
}

TEST(BasicDispatch, EachShapeReachesItsPlaceInTheChain) {
    for (const TableRow& row : statementrows("Dispatch: chain"))
        EXPECT_EQ(chainrule(row[0]), row.number(1)) << row.where;
}

TEST(BasicDispatch, OneLineIfTakesOnlyItsStatements) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega32");
    loadsystemsymbols(ctx);
    ctx.rows.resize(3);
    ctx.rows[2].username = "there";
    ctx.rows[2].label = "L0009";
    for (const TableRow& row : statementrows("Dispatch: one-line If")) {
        ctx.error.clear();
        EXPECT_EQ(dispatchthen(ctx, row[0]), row[1].empty()) << row.where;
        EXPECT_EQ(ctx.error, row[1]) << row.where;
    }
}

TEST(BasicDispatch, NextArgumentTakesQuotedTextsWhole) {
    for (const TableRow& row : statementrows("Dispatch: next argument")) {
        std::string text = row[0];
        EXPECT_EQ(nextargument(text), row[1]) << row.where;
        EXPECT_EQ(text, row[2]) << row.where;
    }
}

}  // namespace
}  // namespace velmora::test
