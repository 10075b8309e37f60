#pragma once
// The EEPROM Memory Editor: eight rows of sixteen bytes from the scroll position on, each
// with the address of its first byte, the typed edit of one byte, and the erase of the whole
// EEPROM to the unprogrammed value. It reads and writes the EEPROM array directly.

#include <array>
#include <optional>
#include <string>

#include "core/machine.h"

namespace velmora {

inline constexpr char kEepromHeading[] = "0  1  2  3  4  5  6  7  8  9  A  B  C  D  E  F";
inline constexpr int kEepromRows = 8;
inline constexpr int kEepromColumns = 16;

struct EepromPage {
    std::array<std::string, kEepromRows> labels;  // "$000", empty beyond the EEPROM
    std::array<std::string, kEepromRows> bytes;   // "FF FF ...", empty beyond the EEPROM
};

class EepromEditor {
public:
    explicit EepromEditor(Machine& m) : m_(m) {}

    int rowcount() const { return (m_.eepromsize + kEepromColumns - 1) / kEepromColumns; }
    // The scroll bar is there only when the rows do not fit.
    bool scrollable() const { return rowcount() > kEepromRows; }
    // First row shown, 0 to scrollmax().
    int scroll() const { return scroll_; }
    void setscroll(int firstrow);
    int scrollmax() const;

    // The page from the scroll position on ("eepromprint").
    EepromPage page() const;
    // The address of the byte in a shown row and column, or nothing beyond the EEPROM.
    std::optional<int> celladdress(int row, int column) const;

    // The typed byte: empty counts as "00", one character gets a leading "0". False, with
    // nothing stored, when it is no byte in hexadecimal; the box then stays.
    bool entercell(int address, const std::string& text);
    // Every byte to `value` (Command2).
    void erase(uint8_t value);

private:
    Machine& m_;
    int scroll_ = 0;
};

}  // namespace velmora
