#pragma once
// Settings kept in memory only: for the command-line runner and for tests.

#include <map>
#include <string>

#include "core/events.h"

namespace velmora {

class MemorySettings : public SettingsAccess {
public:
    std::string getsetting(const std::string& name, const std::string& defaultvalue) override;
    void putsetting(const std::string& name, const std::string& value) override;
    int32_t getsettingdword(const std::string& name, int32_t defaultvalue) override;
    void putsettingdword(const std::string& name, int32_t value) override;

private:
    static std::string key(const std::string& name);
    std::map<std::string, std::string> values_;
};

}  // namespace velmora
