#include "devices/lcdheadless.h"

#include <ostream>

#include "devices/devicespec.h"
#include "devices/lcdbasic.h"
#include "devices/lcdpaint.h"

namespace velmora {

namespace {

// "PORTB" or "PORTB.4" / "PORTB.0" for the data lines.
bool parsedata(const std::string& text, LcdConfig& c) {
    if (const int port = portcodeof(text)) {
        c.dataport = port;
        if (c.interface == kLcdInterfaceLow) c.interface = kLcdInterfaceHigh;
        return true;
    }
    const auto wire = parsepinwire(text);
    if (!wire || (wire->bit != 0 && wire->bit != 4)) return false;
    c.dataport = wire->port;
    if (c.interface != kLcdInterface8) c.interface = wire->bit == 0 ? kLcdInterfaceLow : kLcdInterfaceHigh;
    return true;
}

bool parsetype(const std::string& key, LcdConfig& c) {
    for (const LcdType& type : kLcdTypes)
        if (key == std::to_string(type.lines) + "X" + std::to_string(type.chars)) {
            c.lines = type.lines;
            c.chars = type.chars;
            return true;
        }
    return false;
}

bool readbasic(const std::string& path, LcdConfig& c, std::string& error) {
    const auto config = lcdconfigfrombasicfile(path, c);
    if (!config) {
        error = "cannot read '" + path + "'";
        return false;
    }
    c = *config;
    return true;
}

}  // namespace

std::optional<LcdConfig> parselcdspec(std::string_view spec, std::string& error) {
    LcdConfig c;
    // 4 or 8 data lines when an item says so; four lines keep the nibble that D chose.
    int bits = 0;
    for (const DeviceSpecItem& item : splitdevicespec(spec)) {
        const auto bad = [&](const std::string& why) {
            error = "'" + item.key + (item.hasvalue ? "=" + item.value : "") + "': " + why;
            return std::nullopt;
        };
        if (!item.hasvalue) {
            if (parsetype(item.key, c)) continue;
            if (item.key == "8BIT" || item.key == "4BIT") {
                bits = item.key == "8BIT" ? 8 : 4;
                continue;
            }
            if (portcodeof(item.key) != 0 && parsedata(item.key, c)) continue;
            return bad("not a module type (1x16, 2x16, 4x16, 2x20, 4x20, 2x24, 2x40), 4BIT, 8BIT or a port");
        }
        if (item.key == "D") {
            if (!parsedata(item.value, c)) return bad("expected PORTx, PORTx.4 or PORTx.0");
        } else if (item.key == "RS" || item.key == "E" || item.key == "RW") {
            const auto wire = parsepinwire(item.value);
            if (!wire) return bad("expected a pin such as PORTB.3");
            (item.key == "RS" ? c.rs : item.key == "E" ? c.e : c.rw) = *wire;
        } else if (item.key == "BITS") {
            if (item.value != "4" && item.value != "8") return bad("expected 4 or 8");
            bits = item.value == "8" ? 8 : 4;
        } else if (item.key == "INIT" || item.key == "CMD" || item.key == "DATA") {
            int& delay = item.key == "INIT" ? c.busyinit : item.key == "CMD" ? c.busycmd : c.busydata;
            if (!parselcddelay(item.value, delay)) return bad("expected whole microseconds from 20 to 5000");
        } else if (item.key == "BAS") {
            if (!readbasic(item.value, c, error)) return std::nullopt;
        } else {
            return bad("unknown item; expected D, RS, E, RW, BITS, INIT, CMD, DATA or BAS");
        }
    }
    if (bits == 8) c.interface = kLcdInterface8;
    else if (bits == 4 && c.interface == kLcdInterface8) c.interface = kLcdInterfaceHigh;
    return c;
}

std::unique_ptr<LcdModule> attachlcd(Machine& m, std::string_view spec, std::string& error, std::ostream* log) {
    const auto config = parselcdspec(spec, error);
    if (!config) {
        error = "--lcd " + error;
        return nullptr;
    }
    auto lcd = std::make_unique<LcdModule>();
    lcd->config = *config;
    lcd->log = DeviceLog(log, "lcd");
    lcdpoweron(lcd->state, static_cast<float>(config->busyinit));
    lcd->attach(m);
    return lcd;
}

void printlcd(const LcdModule& lcd, std::ostream& out) {
    for (const std::string& row : lcdtextrows(lcd.state, lcd.config.lines, lcd.config.chars))
        out << '|' << row << "|\n";
}

}  // namespace velmora
