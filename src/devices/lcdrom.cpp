#include "devices/lcdrom.h"

#include <fstream>
#include <sstream>

#include "core/numbers.h"

namespace velmora {

bool readlcdrom(const std::string& text, LcdCharRom& rom, std::string& error) {
    LcdCharRom result;
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        line = line.substr(0, line.find('#'));
        std::istringstream fields(line);
        std::string codefield;
        if (!(fields >> codefield)) continue;
        const auto fail = [&](const std::string& why) {
            error = "line " + std::to_string(number) + ": " + why;
            return false;
        };
        if (codefield.size() != 3 || codefield[2] != ':') return fail("expected 'XX:'");
        const int code = hexfield(codefield.substr(0, 2), 2);
        if (code < 16) return fail("code " + codefield.substr(0, 2) + " is not a ROM code");
        for (uint8_t& row : result.glyphs[code]) {
            std::string rowfield;
            if (!(fields >> rowfield)) return fail("fewer than eight rows");
            const int value = hexfield(rowfield, 2);
            if (value < 0 || value > 0x1F) return fail("row '" + rowfield + "' is not 00..1F");
            row = static_cast<uint8_t>(value);
        }
        std::string extra;
        if (fields >> extra) return fail("more than eight rows");
    }
    rom = result;
    return true;
}

bool loadlcdrom(const std::string& datadirectory, LcdCharRom& rom, std::string& error) {
    const std::string path = datadirectory + "/lcd/hd44780-a00.txt";
    std::ifstream file(path);
    if (!file) {
        error = "cannot read " + path;
        return false;
    }
    std::stringstream content;
    content << file.rdbuf();
    if (!readlcdrom(content.str(), rom, error)) {
        error = path + ": " + error;
        return false;
    }
    return true;
}

}  // namespace velmora
