#pragma once
// The text that wires a device for a headless run: items separated by commas, each a word or
// KEY=VALUE; keys upper-cased, blanks around items and values dropped.

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct DeviceSpecItem {
    std::string key;    // upper case; the whole item when it has no '='
    std::string value;  // as written
    bool hasvalue = false;
};

std::vector<DeviceSpecItem> splitdevicespec(std::string_view spec);

}  // namespace velmora
