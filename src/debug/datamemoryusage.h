#pragma once
// Data Memory Usage: what a BASIC compile made of the data space, as coloured stripes in three
// panels (registers, I/O registers, SRAM) with a legend, the share of flash the code takes,
// and the table of how often each instruction was generated.

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

inline constexpr char kInstructionStatisticsCaption[] = "Show Instructions Usage Statistics";
inline constexpr char kInstructionStatisticsTitle[] = "Instructions Usage Statistics";
inline constexpr char kStatisticsCopied[] = "(The table has been copied to Clipboard.)";
inline constexpr char kFlashUsageHeading[] = "FLASH usage:";
inline constexpr int kUsageKinds = 5;
// Every panel is this many units wide.
inline constexpr int kUsagePanelUnits = 256;
inline constexpr int kStatisticsRows = 38;

struct UsageLegend {
    uint32_t colour;  // 0xffRRGGBB
    const char* text;
};
extern const std::array<UsageLegend, kUsageKinds> kUsageLegend;

// One cell of a panel, in panel units from its left edge.
struct UsageStripe {
    double x = 0;
    double width = 0;
    uint32_t colour = 0;
    int address = 0;
};

struct InstructionUse {
    std::string mnemonic;
    int count = 0;
};

// What a successful compile leaves for the window.
struct CompiledUsage {
    std::vector<int> memoryusage;  // per data address: 0 unused .. 4 user variable
    int sramfirst = 96;            // first SRAM address
    int sramsize = 0;
    int outputwords = 0;
    int flashbytes = 0;
    std::vector<InstructionUse> statistics;  // alphabetical
    int totalinstructions = 0;
};

class DataMemoryUsage {
public:
    explicit DataMemoryUsage(CompiledUsage usage) : usage_(std::move(usage)) {}
    const CompiledUsage& usage() const { return usage_; }

    // The panels, each kUsagePanelUnits wide. Stripes that share a pixel on a narrow panel are
    // listed so that the more telling kind is drawn last.
    std::vector<UsageStripe> gpwrpanel() const;
    std::vector<UsageStripe> iopanel() const;
    std::vector<UsageStripe> srampanel() const;
    // Unit positions of the marks between every eighth register.
    static std::vector<int> gpwrmarks();

    // Code words times two over the flash size, in percent; the bar stops at the full width.
    double flashfraction() const;
    std::string flashlabel() const;  // "12.5%"

    // The table of three columns of 38 rows, then the total; the clipboard's text.
    std::string statisticstable() const;
    // The message: the table and the line that says it was copied.
    std::string statisticsmessage() const;

    static uint32_t colourof(int kind);

private:
    std::vector<UsageStripe> stripes(int first, int count, double width) const;

    CompiledUsage usage_;
};

}  // namespace velmora
