#pragma once
// An LCD module wired to PORTB of a test chip (ATmega32 addresses) as the usual 4-bit board
// has it: D4..D7 on PB4..PB7, RS PB3, E PB2, R/W PB1. The chip runs NOPs while the test
// sets PORTB as a program would, so every bus cycle goes through the pin model.

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/minichip.h"
#include "devices/lcdmodule.h"
#include "devices/lcdpaint.h"
#include "support/sectiontable.h"

namespace velmora::test {

inline constexpr uint8_t kE = 0x04, kRs = 0x08, kRw = 0x02;

// A port of the tables of data/tables.txt by its letter, a pin as letter and bit ("B3"), "-"
// for a line not connected.
inline int portof(const std::string& letter) { return kPortCodeA + (letter.at(0) - 'A'); }
inline PinWire pinof(const std::string& text) {
    return text == "-" ? PinWire{} : PinWire{portof(text), text.at(1) - '0'};
}

// Loads the data records of an Intel HEX file into program memory; false if unreadable.
inline bool loadhexrecords(Machine& m, const std::string& path) {
    std::ifstream file(path);
    std::string line;
    bool any = false;
    while (std::getline(file, line)) {
        if (line.size() < 11 || line[0] != ':') continue;
        const auto byte = [&](size_t at) { return std::stoi(line.substr(at, 2), nullptr, 16); };
        const int count = byte(1), address = (byte(3) << 8) | byte(5), type = byte(7);
        if (type != 0) continue;
        for (int i = 0; i < count; ++i) m.progmem[address + i] = static_cast<uint8_t>(byte(9 + 2 * i));
        any = true;
    }
    return any;
}

struct LcdBench {
    MiniChip chip;
    LcdModule lcd;

    float mhz;

    explicit LcdBench(float clock = 4.0f) : mhz(clock) {
        chip.m.clockfrequency = mhz;
        lcd.config.rw = PinWire{kPortB, 1};
        std::fill(chip.m.progmem.begin(), chip.m.progmem.end(), 0);  // NOPs
        lcd.attach(chip.m);
        clean(chip.m);
        chip.m.simulationrunning = true;
        port(0, 0xFE);
    }
    // Sets PORTB (and DDRB) as OUT instructions would, then runs one one-cycle step.
    void port(uint8_t value, int ddr = -1) {
        if (ddr >= 0) datamemwrite(chip.m, MiniChip::kDdrb, static_cast<uint8_t>(ddr));
        datamemwrite(chip.m, MiniChip::kPortb, value);
        chip.step();
    }
    void idle(uint64_t cycles) {
        for (uint64_t i = 0; i < cycles; ++i) chip.step();
    }
    void waitus(int microseconds) { idle(static_cast<uint64_t>(microseconds * mhz) + 1); }
    // One E strobe with the high nibble of `bits` on D4..D7.
    void strobe(uint8_t bits, bool rs) {
        const uint8_t base = static_cast<uint8_t>((bits & 0xF0) | (rs ? kRs : 0));
        port(base | kE);
        port(base);
    }
    // A whole byte in two strobes, then more than the busy time of a command or data byte.
    void write(uint8_t byte, bool rs) {
        strobe(byte, rs);
        strobe(static_cast<uint8_t>(byte << 4), rs);
        waitus(100);
    }
    void text(const std::string& s) {
        for (char ch : s) write(static_cast<uint8_t>(ch), true);
    }
    // The standard four-bit start after the power-on busy time.
    void init4bit() {
        waitus(1700);
        for (uint8_t nibble : {0x30, 0x30, 0x30, 0x20}) {
            strobe(nibble, false);
            waitus(100);
        }
        for (uint8_t command : {0x28, 0x0C, 0x01, 0x06}) write(command, false);
    }
    std::vector<std::string> rows() const { return lcdtextrows(lcd.state, lcd.config.lines, lcd.config.chars); }
    // The rows right-trimmed and joined by "/".
    std::string shown() const {
        std::string text;
        for (const std::string& row : rows()) text += row.substr(0, row.find_last_not_of(' ') + 1) + "/";
        return text.substr(0, text.size() - 1);
    }
    // Runs a script of the [Bus] table of data/tables.txt.
    void script(const std::string& text) {
        std::istringstream words(text);
        for (std::string w; words >> w;) {
            const bool rs = w[0] == 'D' || w[0] == 'd';
            if (w == "init")
                init4bit();
            else if (w.starts_with("text:"))
                this->text(w.substr(5));
            else if (w[0] == 'i')
                idle(std::stoull(w.substr(1)));
            else if (w[0] == 'C' || w[0] == 'D')
                write(static_cast<uint8_t>(std::stoi(w.substr(1), nullptr, 16)), rs);
            else
                strobe(static_cast<uint8_t>(std::stoi(w.substr(1), nullptr, 16) << 4), rs);
        }
    }
};

}  // namespace velmora::test
