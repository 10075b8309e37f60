#include "debug/datamemoryusage.h"

#include <algorithm>
#include <cstdio>

namespace velmora {

const std::array<UsageLegend, kUsageKinds> kUsageLegend = {{
    {0xFF000000u, "Unimplemented/non-physical"},
    {0xFFFF8080u, "I/O register location"},
    {0xFF80FF80u, "Free SRAM/GPWR location"},
    {0xFF8080FFu, "GPWR used by system"},
    {0xFFFF80FFu, "SRAM/GPWR used by user program"},
}};

namespace {
constexpr int kRegisterCount = 32;
constexpr int kIoCount = 64;
constexpr int kIoFirst = 32;
constexpr int kSmallSram = 128;
constexpr int kMarkEvery = 8;
}  // namespace

uint32_t DataMemoryUsage::colourof(int kind) {
    return kind >= 0 && kind < kUsageKinds ? kUsageLegend[static_cast<size_t>(kind)].colour : kUsageLegend[0].colour;
}

std::vector<UsageStripe> DataMemoryUsage::stripes(int first, int count, double width) const {
    std::vector<std::pair<int, UsageStripe>> ranked;
    for (int i = 0; i < count; ++i) {
        const int address = first + i;
        const int kind = address < static_cast<int>(usage_.memoryusage.size()) ? usage_.memoryusage[static_cast<size_t>(address)] : 0;
        // On a shared pixel the higher kind is drawn last: a user's variable over the compiler's
        // registers over the free cells over the rest.
        const int rank = kind >= 0 && kind < kUsageKinds ? kind : 0;
        ranked.push_back({rank, {i * width, width, colourof(kind), address}});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<UsageStripe> list;
    for (const auto& entry : ranked) list.push_back(entry.second);
    return list;
}

std::vector<UsageStripe> DataMemoryUsage::gpwrpanel() const {
    return stripes(0, kRegisterCount, static_cast<double>(kUsagePanelUnits) / kRegisterCount);
}

std::vector<UsageStripe> DataMemoryUsage::iopanel() const {
    return stripes(kIoFirst, kIoCount, static_cast<double>(kUsagePanelUnits) / kIoCount);
}

std::vector<UsageStripe> DataMemoryUsage::srampanel() const {
    if (usage_.sramsize <= 0) return {};
    // 128 cells take two units each; a larger SRAM shares the same width.
    const double width = usage_.sramsize <= kSmallSram ? 2.0 : static_cast<double>(kUsagePanelUnits) / usage_.sramsize;
    return stripes(usage_.sramfirst, usage_.sramsize, width);
}

std::vector<int> DataMemoryUsage::gpwrmarks() {
    std::vector<int> marks;
    const int unit = kUsagePanelUnits / kRegisterCount;
    for (int r = kMarkEvery; r < kRegisterCount; r += kMarkEvery) marks.push_back(r * unit);
    return marks;
}

double DataMemoryUsage::flashfraction() const {
    if (usage_.flashbytes <= 0) return 0;
    return static_cast<double>(usage_.outputwords) * 2.0 / usage_.flashbytes;
}

std::string DataMemoryUsage::flashlabel() const {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f%%", flashfraction() * 100.0);
    return text;
}

std::string DataMemoryUsage::statisticstable() const {
    const std::vector<InstructionUse>& stats = usage_.statistics;
    std::string table;
    const int columns = (static_cast<int>(stats.size()) + kStatisticsRows - 1) / kStatisticsRows;
    for (int row = 0; row < kStatisticsRows && row < static_cast<int>(stats.size()); ++row) {
        std::string line;
        for (int column = 0; column < columns; ++column) {
            const size_t index = static_cast<size_t>(column * kStatisticsRows + row);
            if (index >= stats.size()) break;
            if (column > 0) line += "\t\t";
            line += stats[index].mnemonic + "\t" + std::to_string(stats[index].count);
        }
        table += line + "\n";
    }
    table += "\nTotal: " + std::to_string(usage_.totalinstructions) + " instructions.";
    return table;
}

std::string DataMemoryUsage::statisticsmessage() const { return statisticstable() + "\n\n" + kStatisticsCopied; }

}  // namespace velmora
