// Select Pin and Select Option: clicks, double clicks, Select and Cancel.

#include <gtest/gtest.h>

#include "devices/selectoption.h"
#include "devices/selectpin.h"

namespace velmora::test {
namespace {

TEST(SelectPin, ClicksAndResults) {
    enum Act { Port, Bit, DoublePort, DoubleBit, Select, Cancel };
    const struct {
        const char* name;
        bool portonly;
        std::vector<std::pair<Act, int>> acts;
        int port, bit;
        bool finished;
    } rows[] = {
        {"opens on the exchange values", false, {}, 6, 3, false},
        {"clicks move the selection", false, {{Port, 8}, {Bit, 7}}, 8, 7, false},
        {"select accepts", false, {{Port, 5}, {Select, 0}}, 5, 3, true},
        {"double click on a bit accepts", false, {{DoubleBit, 1}}, 6, 1, true},
        {"double click on a port accepts", false, {{DoublePort, 11}}, 11, 3, true},
        {"cancel gives port 0", false, {{Port, 7}, {Cancel, 0}}, 0, 3, true},
        {"out of range ignored", false, {{Port, 12}, {Port, 4}, {Bit, 8}}, 6, 3, false},
        {"port only: bits take no clicks", true, {{Bit, 5}, {DoubleBit, 6}}, 6, 0, false},
        {"port only: double click on a port", true, {{DoublePort, 9}}, 9, 0, true},
    };
    for (const auto& row : rows) {
        SelectPin dialog(6, 3, row.portonly);
        EXPECT_EQ(dialog.caption(), row.portonly ? "Select Port" : "Select Pin") << row.name;
        for (const auto& [act, value] : row.acts) {
            switch (act) {
            case Port: dialog.clickport(value); break;
            case Bit: dialog.clickbit(value); break;
            case DoublePort: dialog.doubleclickport(value); break;
            case DoubleBit: dialog.doubleclickbit(value); break;
            case Select: dialog.select(); break;
            case Cancel: dialog.cancel(); break;
            }
        }
        EXPECT_EQ(dialog.port(), row.port) << row.name;
        EXPECT_EQ(dialog.bit(), row.bit) << row.name;
        EXPECT_EQ(dialog.finished(), row.finished) << row.name;
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
