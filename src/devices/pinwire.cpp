#include "devices/pinwire.h"

#include "core/textcase.h"

namespace velmora {

std::string portname(int portcode) {
    if (portcode < kPortCodeA || portcode >= kPortCodeA + kPortCount) return "";
    return std::string("PORT") + static_cast<char>('A' + portcode - kPortCodeA);
}

int portcodeof(std::string_view name) {
    for (int code = kPortCodeA; code < kPortCodeA + kPortCount; ++code)
        if (sameignoringcase(name, portname(code))) return code;
    return 0;
}

std::optional<PinWire> parsepinwire(std::string_view text) {
    const size_t split = text.find_first_of(".,");
    if (split == std::string_view::npos || split + 2 != text.size()) return std::nullopt;
    const int port = portcodeof(text.substr(0, split));
    const char digit = text[split + 1];
    if (port == 0 || digit < '0' || digit > '7') return std::nullopt;
    return PinWire{port, digit - '0'};
}

}  // namespace velmora
