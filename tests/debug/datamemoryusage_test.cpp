// Data Memory Usage: the panels' stripes from a compile's usage table, the flash share, and
// the instruction statistics table.

#include <gtest/gtest.h>

#include "debug/datamemoryusage.h"

namespace velmora::test {
namespace {

constexpr uint32_t kBlack = 0xFF000000u, kRed = 0xFFFF8080u, kGreen = 0xFF80FF80u, kBlue = 0xFF8080FFu,
                   kPink = 0xFFFF80FFu;

CompiledUsage usage(int sramsize) {
    CompiledUsage u;
    u.sramfirst = 96;
    u.sramsize = sramsize;
    u.memoryusage.assign(static_cast<size_t>(96 + sramsize), 2);
    for (int a = 32; a < 96; ++a) u.memoryusage[static_cast<size_t>(a)] = a == 95 ? 1 : 0;
    u.memoryusage[16] = 3;
    u.memoryusage[17] = 4;
    if (sramsize > 0) u.memoryusage[96] = 4;
    return u;
}

const UsageStripe* stripeat(const std::vector<UsageStripe>& stripes, int address) {
    for (const UsageStripe& s : stripes)
        if (s.address == address) return &s;
    return nullptr;
}

TEST(DataMemoryUsage, StripesOfEachPanel) {
    const DataMemoryUsage small(usage(128));
    const DataMemoryUsage large(usage(2048));
    const struct {
        const char* name;
        std::vector<UsageStripe> stripes;
        size_t count;
        int address;
        double x, width;
        uint32_t colour;
    } rows[] = {
        {"a free register", small.gpwrpanel(), 32, 0, 0, 8, kGreen},
        {"a register of the compiler", small.gpwrpanel(), 32, 16, 128, 8, kBlue},
        {"a register of a variable", small.gpwrpanel(), 32, 17, 136, 8, kPink},
        {"an unused I/O cell", small.iopanel(), 64, 32, 0, 4, kBlack},
        {"SREG's place", small.iopanel(), 64, 95, 252, 4, kRed},
        {"128 SRAM cells, two units each", small.srampanel(), 128, 97, 2, 2, kGreen},
        {"2048 SRAM cells share the width", large.srampanel(), 2048, 96 + 1024, 128, 0.125, kGreen},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(r.stripes.size(), r.count) << r.name;
        const UsageStripe* s = stripeat(r.stripes, r.address);
        ASSERT_TRUE(s) << r.name;
        EXPECT_DOUBLE_EQ(s->x, r.x) << r.name;
        EXPECT_DOUBLE_EQ(s->width, r.width) << r.name;
        EXPECT_EQ(s->colour, r.colour) << r.name;
    }
    // On a shared pixel the variable is drawn after the free cells around it.
    const std::vector<UsageStripe> sram = large.srampanel();
    EXPECT_EQ(sram.back().address, 96);
    EXPECT_EQ(DataMemoryUsage::gpwrmarks(), (std::vector<int>{64, 128, 192}));
    EXPECT_TRUE(DataMemoryUsage(usage(0)).srampanel().empty());
}

TEST(DataMemoryUsage, FlashShare) {
    const struct {
        int words, flashbytes;
        const char* label;
    } rows[] = {{100, 32768, "0.6%"}, {16384, 32768, "100.0%"}, {0, 2048, "0.0%"}, {1023, 2048, "99.9%"},
                {1100, 2048, "107.4%"}};
    for (const auto& r : rows) {
        CompiledUsage u;
        u.outputwords = r.words;
        u.flashbytes = r.flashbytes;
        EXPECT_EQ(DataMemoryUsage(u).flashlabel(), r.label) << r.words;
    }
}

TEST(DataMemoryUsage, StatisticsTableOfThreeColumns) {
    CompiledUsage u;
    for (int i = 0; i < 114; ++i) u.statistics.push_back({"M" + std::to_string(i), i % 3});
    u.totalinstructions = 114;
    const DataMemoryUsage view(u);
    const std::string table = view.statisticstable();
    const size_t firstline = table.find('\n');
    EXPECT_EQ(table.substr(0, firstline), "M0\t0\t\tM38\t2\t\tM76\t1");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 39);
    EXPECT_TRUE(table.ends_with("\nM37\t1\t\tM75\t0\t\tM113\t2\n\nTotal: 114 instructions."));
    EXPECT_EQ(view.statisticsmessage(), table + "\n\n(The table has been copied to Clipboard.)");
}

}  // namespace
}  // namespace velmora::test
