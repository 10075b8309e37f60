// Section 0: "key: value" lines. Sizes resize the machine at once, so the keys must stand
// before the sections that fill the memories.

#include <algorithm>
#include <array>
#include <string_view>

#include "core/numbers.h"
#include "models/modelsections.h"
#include "models/modeltext.h"

namespace velmora::models {

namespace {

// Largest sizes a model may declare: a 22-bit word PC and a 16-bit data space.
constexpr int64_t kMaxFlash = 8 * 1024 * 1024;
constexpr int64_t kDataSpaceLimit = 65536;
constexpr int64_t kMaxEeprom = 65536;

void applysizes(ModelReading& r) {
    resize(r.m, r.sizes.flash, r.sizes.dataextendedio, r.sizes.datasram, r.sizes.eeprom);
}

// A size outside [0, limit] is kept out of the machine and reported when the file is read.
bool checksize(ModelReading& r, int64_t value, int64_t limit, const std::string& line) {
    if (value >= 0 && value <= limit) return true;
    if (r.sizes.badkey.empty()) r.sizes.badkey = line;
    return false;
}

std::vector<int> valuelist(std::string_view text) {
    std::vector<int> values;
    for (const std::string& field : splitfields(text, ',')) values.push_back(clamptoint(lenientdecimal(field)));
    return values;
}

using KeyHandler = void (*)(ModelReading&, std::string_view value, const std::string& line);

struct Key {
    std::string_view key;
    KeyHandler handler;
};

int number(std::string_view value) { return clamptoint(lenientdecimal(value)); }

const std::array<Key, 12> kKeys{{
    {"pins: ", [](ModelReading& r, std::string_view v, const std::string&) { r.m.pincount = number(v); }},
    {"flash: ",
     [](ModelReading& r, std::string_view v, const std::string& line) {
         const int64_t flash = lenientdecimal(v);
         if (!checksize(r, flash, kMaxFlash, line)) return;
         r.sizes.flash = static_cast<int>(flash);
         applysizes(r);
     }},
    {"extendedio: ",
     [](ModelReading& r, std::string_view v, const std::string& line) {
         const int64_t extendedio = lenientdecimal(v);
         if (checksize(r, extendedio, kDataSpaceLimit - 96, line)) r.sizes.extendedio = static_cast<int>(extendedio);
     }},
    {"sram: ",
     [](ModelReading& r, std::string_view v, const std::string&) {
         // The data space takes the extended I/O declared so far. A size it cannot hold builds
         // no SRAM cells, which the cell count check at the end reports.
         r.sizes.sram = lenientdecimal(v);
         r.sizes.dataextendedio = r.sizes.extendedio;
         const bool fits = r.sizes.sram >= 0 && r.sizes.sram <= kDataSpaceLimit - 96 - r.sizes.extendedio;
         r.sizes.datasram = fits ? static_cast<int>(r.sizes.sram) : 0;
         r.sizes.sramcells = r.sizes.datasram;
         applysizes(r);
     }},
    {"eeprom: ",
     [](ModelReading& r, std::string_view v, const std::string& line) {
         const int64_t eeprom = lenientdecimal(v);
         if (!checksize(r, eeprom, kMaxEeprom, line)) return;
         r.sizes.eeprom = static_cast<int>(eeprom);
         applysizes(r);
     }},
    {"simconf: ", [](ModelReading& r, std::string_view v, const std::string&) { r.m.kinds.simconf = number(v); }},
    {"instsetconf: ",
     [](ModelReading& r, std::string_view v, const std::string&) { r.m.kinds.instsetconf = number(v); }},
    {"intconf: ",
     [](ModelReading& r, std::string_view v, const std::string&) {
         const std::vector<int> kinds = valuelist(v);
         r.m.kinds.int0 = kinds[0];
         r.m.kinds.int1 = kinds.size() > 1 ? kinds[1] : 0;
     }},
    {"compconf: ",
     [](ModelReading& r, std::string_view v, const std::string&) {
         // kind, bandgap, plus, minus and an optional third input: always at least four values.
         std::vector<int> values = valuelist(v);
         values.resize(std::clamp<size_t>(values.size(), 4, 5), 0);
         r.m.kinds.compconf = values;
     }},
    {"adcconf: ", [](ModelReading& r, std::string_view v, const std::string&) { r.m.kinds.adcconf = number(v); }},
    {"eeconf: ", [](ModelReading& r, std::string_view v, const std::string&) { r.m.kinds.eeconf = number(v); }},
    {"uartconf: ", [](ModelReading& r, std::string_view v, const std::string&) { r.m.kinds.uartconf = number(v); }},
}};

}  // namespace

void readkeyline(ModelReading& reading, const std::string& line) {
    for (const Key& k : kKeys)
        if (line.starts_with(k.key)) {
            k.handler(reading, std::string_view(line).substr(k.key.size()), line);
            return;
        }
}

}  // namespace velmora::models
