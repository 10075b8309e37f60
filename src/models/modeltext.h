#pragma once
// Small text helpers of the model file reader (internal to the models library).

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/textcase.h"

namespace velmora::models {

std::string trim(std::string_view text);
bool isblankline(std::string_view text);

// Splits at every `separator`; an empty text gives one empty field.
std::vector<std::string> splitfields(std::string_view text, char separator);

// The field at `index`, or an empty text when the line has fewer fields.
std::string fieldat(const std::vector<std::string>& fields, size_t index);

// Fits a lenient decimal into an int, saturating.
int clamptoint(int64_t value);

}  // namespace velmora::models
