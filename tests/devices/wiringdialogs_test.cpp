// Select Pin and Select Option: clicks, double clicks, Select and Cancel.

#include <gtest/gtest.h>

#include <sstream>

#include "devices/selectoption.h"
#include "devices/selectpin.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

TEST(SelectPin, ClicksAndResults) {
    for (const TableRow& row : tablerows("tables.txt", "Select pin")) {
        SelectPin dialog(6, 3, row.flag(1));
        EXPECT_EQ(dialog.caption(), row.flag(1) ? "Select Port" : "Select Pin") << row.where;
        std::istringstream clicks(row[2]);
        for (std::string click; clicks >> click;) {
            const size_t digits = click.find_first_of("0123456789");
            const int value = digits == std::string::npos ? 0 : std::stoi(click.substr(digits));
            if (click == "S")
                dialog.select();
            else if (click == "C")
                dialog.cancel();
            else if (click.starts_with("DP"))
                dialog.doubleclickport(value);
            else if (click.starts_with("DB"))
                dialog.doubleclickbit(value);
            else if (click[0] == 'P')
                dialog.clickport(value);
            else
                dialog.clickbit(value);
        }
        EXPECT_EQ(std::vector<long>({dialog.port(), dialog.bit()}), std::vector<long>({row.number(3), row.number(4)}))
            << row.where;
        EXPECT_EQ(dialog.finished(), row.flag(5)) << row.where;
    }
}

TEST(SelectOption, RowsHeadingsAndResults) {
    SelectOption dialog("Please select the type", "of the interface with LCD module:", {"8-bit", "", "4-bit, Low"}, 0);
    EXPECT_EQ(dialog.visiblerows(), (std::vector<int>{0, 2}));
    EXPECT_EQ(dialog.headinglines(), 2);
    dialog.click(1);  // empty row: not shown, not selectable
    EXPECT_EQ(dialog.selected(), 0);
    dialog.click(2);
    EXPECT_EQ(dialog.selected(), 2);
    EXPECT_FALSE(dialog.finished());
    dialog.select();
    EXPECT_TRUE(dialog.finished());

    SelectOption one("Please select LCD module type:", "", {"a", "b"}, 1);
    EXPECT_EQ(one.headinglines(), 1);
    one.doubleclick(0);
    EXPECT_TRUE(one.finished());
    EXPECT_EQ(one.selected(), 0);

    SelectOption cancelled("x", "y", std::vector<std::string>(30, "row"), 3);
    EXPECT_EQ(cancelled.options().size(), 21u);
    cancelled.cancel();
    EXPECT_EQ(cancelled.selected(), -1);
}

}  // namespace
}  // namespace velmora::test
