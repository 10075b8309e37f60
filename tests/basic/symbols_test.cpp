// Operand texts to type and address, for every form an operand can take.

#include "basic/declarations.h"
#include "basic/symbols.h"
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
    const std::tuple<const char*, int, int32_t> cases[] = {
        {"b", kTypeByte, 0x60},       {"w", kTypeWord, 0x61},        {"l", kTypeLong, 0x63},
        {"a(5)", kTypeByte, 0x6C},     {"a(200)", kTypeByte, 0x67 + 200}, {"v(3)", kTypeWord, 0x77},
        {"a(b)", kTypeByteIndexed, 0x67 * 10000 + 0x60}, {"v(w)", kTypeWordIndexed, 0x71 * 10000 + 0x61},
        {"a(l)", kTypeNone, 0},       {"a(05)", kTypeNone, 0},      {"a(256)", kTypeNone, 0},
        {"(5)", kTypeNone, 0},        {"a(5", kTypeNone, 0},
        {"l.LB", kTypeByte, 0x63},    {"l.HB", kTypeByte, 0x64},     {"l.LW", kTypeWord, 0x63},
        {"l.HW", kTypeWord, 0x65},    {"w.LB", kTypeByte, 0x61},     {"w.HB", kTypeByte, 0x62},
        {"w.LW", kTypeNone, 0},       {"w.3", kTypeBit, 0x61 * 100 + 3}, {"w.8", kTypeBit, 0x62 * 100},
        {"w.15", kTypeBit, 0x62 * 100 + 7}, {"w.16", kTypeNone, 0}, {"b.7", kTypeBit, 0x60 * 100 + 7},
        {"b.8", kTypeNone, 0},        {"l.0", kTypeNone, 0},
        {"PORTB", kTypeByte, 0x38},   {"PB", kTypeByte, 0x38},       {"PB3", kTypeBit, 0x38 * 100 + 3},
        {"PORTB.3", kTypeBit, 0x38 * 100 + 3}, {"R31", kTypeByte, 31},       {"ZH", kTypeByte, 31},
        {"ADCSRA.ADEN", kTypeBit, 0x26 * 100 + 7}, {"flags.ADEN", kTypeNone, 0}, {"nothing", kTypeNone, 0},
        {"5", kTypeNone, 0},
    };
    for (const auto& [text, type, address] : cases) {
        EXPECT_EQ(symboltype(d.ctx, text), type) << text;
        EXPECT_EQ(symboladdress(d.ctx, text), address) << text;
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

}  // namespace
}  // namespace velmora::test
