#include "devices/lcdbasic.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/numbers.h"
#include "core/textcase.h"

namespace velmora {

namespace {

// The line as the scan compares it: comment cut, tabs (and the CR of a CR LF end) blank, "="
// set apart, blanks closed up, trimmed, upper case.
std::string cleanline(std::string_view line) {
    line = line.substr(0, line.find('\''));
    std::string widened;
    for (const char ch : line) {
        if (ch == '=') widened += " = ";
        else widened += ch == '\t' || ch == '\r' ? ' ' : ch;
    }
    std::string closed;
    for (const char ch : widened)
        if (!(ch == ' ' && (closed.empty() || closed.back() == ' '))) closed += ch;
    while (!closed.empty() && closed.back() == ' ') closed.pop_back();
    return uppercase(closed);
}

// A port name gives its code, anything else the number parser's value (100000: not a number).
int definevalue(std::string_view text) {
    if (const int port = portcodeof(text)) return port;
    return parsenumber16(text);
}

}  // namespace

LcdConfig lcdconfigfrombasic(std::string_view source, LcdConfig current) {
    constexpr std::array<const char*, 11> kNames = {"LCD_DREG",  "LCD_DBIT",  "LCD_RSREG", "LCD_RSBIT",
                                                    "LCD_EREG",  "LCD_EBIT",  "LCD_RWREG", "LCD_RWBIT",
                                                    "LCD_BITS",  "LCD_LINES", "LCD_CHARS"};
    enum { DReg, DBit, RsReg, RsBit, EReg, EBit, RwReg, RwBit, Bits, Lines, Chars };
    std::array<int, 11> values = {kPortCodeB, 4, kPortCodeB, 3, kPortCodeB, 2, 0, 0, 4, 0, 0};
    std::istringstream lines{std::string(source)};
    std::string raw;
    while (std::getline(lines, raw)) {
        const std::string line = cleanline(raw);
        if (line.rfind("DEFINE ", 0) != 0) continue;
        const std::string rest = line.substr(7);
        const size_t equals = rest.find(" = ");
        if (equals == std::string::npos) continue;
        for (size_t i = 0; i < kNames.size(); ++i) {
            if (rest.rfind(kNames[i], 0) != 0) continue;
            const int value = definevalue(rest.substr(equals + 3));
            if (value != kNotANumber16) values[i] = value;
            break;
        }
    }
    current.dataport = values[DReg];
    current.interface = values[Bits] == 8 ? kLcdInterface8 : values[DBit];
    current.rs = PinWire{values[RsReg], values[RsBit]};
    current.e = PinWire{values[EReg], values[EBit]};
    current.rw = PinWire{values[RwReg], values[RwBit]};
    if (lcdtypeindex(values[Lines], values[Chars]) >= 0) {
        current.lines = values[Lines];
        current.chars = values[Chars];
    }
    return current;
}

std::optional<LcdConfig> lcdconfigfrombasicfile(const std::string& path, LcdConfig current) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::stringstream content;
    content << file.rdbuf();
    return lcdconfigfrombasic(content.str(), current);
}

std::string lcdbasicbeside(const std::string& programpath) {
    if (programpath.empty()) return "";
    std::filesystem::path path(programpath);
    path.replace_extension(".bas");
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) ? path.string() : "";
}

}  // namespace velmora
