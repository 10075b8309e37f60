#include "devices/lcdconfig.h"

#include <cstdlib>

namespace velmora {

const std::array<LcdType, 7> kLcdTypes = {{
    {1, 16, "1 line, 16 characters"},
    {2, 16, "2 lines, 16 characters"},
    {4, 16, "4 lines, 16 characters"},
    {2, 20, "2 lines, 20 characters"},
    {4, 20, "4 lines, 20 characters"},
    {2, 24, "2 lines, 24 characters"},
    {2, 40, "2 lines, 40 characters"},
}};

const std::array<LcdColors, 4> kLcdColorSchemes = {{
    {"light background", rgb(255, 224, 192), rgb(0, 0, 0), rgb(224, 224, 224)},
    {"dark background", rgb(39, 39, 39), rgb(199, 254, 241), rgb(0, 64, 64)},
    {"green background", rgb(130, 250, 110), rgb(0, 0, 0), rgb(120, 240, 100)},
    {"blue background", rgb(40, 45, 110), rgb(255, 255, 255), rgb(50, 55, 120)},
}};

int lcdtypeindex(int lines, int chars) {
    for (size_t i = 0; i < kLcdTypes.size(); ++i)
        if (kLcdTypes[i].lines == lines && kLcdTypes[i].chars == chars) return static_cast<int>(i);
    return -1;
}

bool parselcddelay(const std::string& text, int& delay) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < kLcdMinDelay || value > kLcdMaxDelay) return false;
    delay = static_cast<int>(value);
    return true;
}

namespace {

// A whole number in [low, high] written as text; anything else gives the fallback.
int readnumber(SettingsAccess& settings, const char* name, int fallback, int low, int high) {
    const std::string text = settings.getsetting(name, std::to_string(fallback));
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < low || value > high) return fallback;
    return static_cast<int>(value);
}

int readport(SettingsAccess& settings, const char* name, int fallback) {
    const int port = readnumber(settings, name, fallback, 0, kPortCodeA + kPortCount - 1);
    return (port == 0 || port >= kPortCodeA) ? port : fallback;
}

PinWire readwire(SettingsAccess& settings, const char* portname, const char* bitname, PinWire fallback) {
    return PinWire{readport(settings, portname, fallback.port), readnumber(settings, bitname, fallback.bit, 0, 7)};
}

void put(SettingsAccess& settings, const char* name, int value) { settings.putsetting(name, std::to_string(value)); }

}  // namespace

LcdConfig loadlcdconfig(SettingsAccess& settings) {
    const LcdConfig d;
    LcdConfig c;
    c.lines = readnumber(settings, "LCD Lines", d.lines, 1, 4);
    c.chars = readnumber(settings, "LCD Characters", d.chars, 16, 40);
    if (lcdtypeindex(c.lines, c.chars) < 0) {
        c.lines = d.lines;
        c.chars = d.chars;
    }
    c.dataport = readport(settings, "LCD Data Lines Port", d.dataport);
    c.interface = readnumber(settings, "LCD Data Lines Interface", d.interface, 0, 8);
    if (c.interface != kLcdInterface8 && c.interface != kLcdInterfaceHigh && c.interface != kLcdInterfaceLow)
        c.interface = d.interface;
    c.rs = readwire(settings, "LCD RS Line Port", "LCD RS Line Bit", d.rs);
    c.e = readwire(settings, "LCD E Line Port", "LCD E Line Bit", d.e);
    c.rw = readwire(settings, "LCD R/W Line Port", "LCD R/W Line Bit", d.rw);
    c.colorscheme = readnumber(settings, "LCD Color Scheme", d.colorscheme, 0, 3);
    c.busyinit = readnumber(settings, "LCD Busy Delay Init", d.busyinit, kLcdMinDelay, kLcdMaxDelay);
    c.busycmd = readnumber(settings, "LCD Busy Delay Cmd", d.busycmd, kLcdMinDelay, kLcdMaxDelay);
    c.busydata = readnumber(settings, "LCD Busy Delay Data", d.busydata, kLcdMinDelay, kLcdMaxDelay);
    return c;
}

void savelcdconfig(SettingsAccess& settings, const LcdConfig& c) {
    put(settings, "LCD Lines", c.lines);
    put(settings, "LCD Characters", c.chars);
    put(settings, "LCD Data Lines Port", c.dataport);
    put(settings, "LCD Data Lines Interface", c.interface);
    put(settings, "LCD RS Line Port", c.rs.port);
    put(settings, "LCD RS Line Bit", c.rs.bit);
    put(settings, "LCD E Line Port", c.e.port);
    put(settings, "LCD E Line Bit", c.e.bit);
    put(settings, "LCD R/W Line Port", c.rw.port);
    put(settings, "LCD R/W Line Bit", c.rw.bit);
    put(settings, "LCD Color Scheme", c.colorscheme);
    put(settings, "LCD Busy Delay Init", c.busyinit);
    put(settings, "LCD Busy Delay Cmd", c.busycmd);
    put(settings, "LCD Busy Delay Data", c.busydata);
}

}  // namespace velmora
