#pragma once
// The words of the language in their one spelling: statements, operators, Lcd command words
// and the Define parameter names. The editor colours them and the line cleaner spells them.

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

const std::vector<std::string_view>& basickeywords();
const std::vector<std::string_view>& basicdefinenames();

// Keywords, Define names and then the model's register and bit names, in that order.
std::vector<std::string> basickeywordlist(const std::vector<std::string>& modelnames);

}  // namespace velmora
