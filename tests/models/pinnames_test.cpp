// Pin names of the Microcontroller View: the display form and the removal of functions by
// whole token (data/tables.txt).

#include <gtest/gtest.h>

#include "models/pinnames.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

TEST(PinNames, DisplayFormWithTheSideMarkAndGroupsRemovingWholeTokens) {
    const std::vector<std::string> groups = {"Pcint", "Adc", "Ain", "ExternalSram", "Interrupt", "Usart", "Spi"};
    for (const TableRow& row : tablerows("tables.txt", "Pin names")) {
        PinFilters filters{};
        for (size_t g = 0; g < groups.size(); ++g) filters[g] = row[0] == "all" || row[0] == groups[g];
        EXPECT_EQ(pindisplayname(row[2], row.flag(1), filters), row[3]) << row.where;
    }
    EXPECT_FALSE(ingroup(PinFunctionGroup::Interrupt, "INT"));
    EXPECT_FALSE(ingroup(PinFunctionGroup::ExternalSram, "A"));
}

}  // namespace
}  // namespace velmora::test
