#include "devices/devicespec.h"

#include "core/textcase.h"

namespace velmora {

namespace {
std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}
}  // namespace

std::vector<DeviceSpecItem> splitdevicespec(std::string_view spec) {
    std::vector<DeviceSpecItem> items;
    while (!spec.empty()) {
        const size_t comma = spec.find(',');
        const std::string_view item = trimmed(spec.substr(0, comma));
        spec = comma == std::string_view::npos ? std::string_view{} : spec.substr(comma + 1);
        if (item.empty()) continue;
        const size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            items.push_back({uppercase(item), "", false});
        } else {
            items.push_back({uppercase(trimmed(item.substr(0, equals))), std::string(trimmed(item.substr(equals + 1))), true});
        }
    }
    return items;
}

}  // namespace velmora
