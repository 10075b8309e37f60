// Number notations and field readers: one row of data/numbers.txt each.

#include <gtest/gtest.h>

#include <string>

#include "core/numbers.h"
#include "support/datafile.h"

namespace velmora::test {
namespace {

TEST(Numbers, EveryRowOfTheTable) {
    for (const DataRow& row : datarows("numbers.txt")) {
        const size_t open = row.text.find(" ["), close = row.text.rfind("] ");
        ASSERT_TRUE(open != std::string::npos && close != std::string::npos && close > open) << row.line;
        const std::string reader = row.text.substr(0, open), expected = row.text.substr(close + 2);
        std::string text = row.text.substr(open + 2, close - open - 2);
        for (size_t tab; (tab = text.find("\\t")) != std::string::npos;) text.replace(tab, 2, "\t");
        const bool bad = expected == "bad";
        const long long value = bad ? 0 : std::stoll(expected, nullptr, 0);
        SCOPED_TRACE("line " + std::to_string(row.line) + ": " + reader + " [" + text + "]");
        if (reader == "parsenumber16") {
            EXPECT_EQ(parsenumber16(text), bad ? kNotANumber16 : value);
        } else if (reader == "parsenumber32") {
            EXPECT_EQ(parsenumber32(text), bad ? kNotANumber32 : static_cast<double>(value));
        } else if (reader == "hexfield2" || reader == "hexfield4") {
            EXPECT_EQ(hexfield(text, reader.back() - '0'), bad ? -1 : value);
        } else if (reader == "lenientdecimal") {
            EXPECT_EQ(lenientdecimal(text), value);
        } else {
            ADD_FAILURE() << "no reader " << reader;
        }
    }
}

}  // namespace
}  // namespace velmora::test
