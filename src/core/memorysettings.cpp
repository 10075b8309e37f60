#include "core/memorysettings.h"

#include <cctype>
#include <cstdlib>

#include "core/textcase.h"

namespace velmora {

std::string MemorySettings::key(const std::string& name) { return lowercase(name); }

std::string MemorySettings::getsetting(const std::string& name, const std::string& defaultvalue) {
    auto it = values_.find(key(name));
    if (it != values_.end()) return it->second;
    values_[key(name)] = defaultvalue;
    return defaultvalue;
}

void MemorySettings::putsetting(const std::string& name, const std::string& value) { values_[key(name)] = value; }

int32_t MemorySettings::getsettingdword(const std::string& name, int32_t defaultvalue) {
    auto it = values_.find(key(name));
    if (it != values_.end()) return static_cast<int32_t>(std::strtol(it->second.c_str(), nullptr, 10));
    values_[key(name)] = std::to_string(defaultvalue);
    return defaultvalue;
}

void MemorySettings::putsettingdword(const std::string& name, int32_t value) {
    values_[key(name)] = std::to_string(value);
}

}  // namespace velmora
