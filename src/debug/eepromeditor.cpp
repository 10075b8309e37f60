#include "debug/eepromeditor.h"

#include <algorithm>

#include "core/hextext.h"
#include "debug/memorytext.h"

namespace velmora {

void EepromEditor::setscroll(int firstrow) { scroll_ = std::clamp(firstrow, 0, scrollmax()); }

int EepromEditor::scrollmax() const { return std::max(0, rowcount() - kEepromRows); }

EepromPage EepromEditor::page() const {
    EepromPage page;
    for (int row = 0; row < kEepromRows; ++row) {
        const int first = (std::min(scroll_, scrollmax()) + row) * kEepromColumns;
        if (first >= m_.eepromsize) break;
        page.labels[row] = dollarhex(static_cast<uint32_t>(first), 3);
        std::string& bytes = page.bytes[row];
        for (int a = first; a < first + kEepromColumns && a < m_.eepromsize; ++a) {
            if (a > first) bytes += ' ';
            bytes += hex2(m_.eeprommem[static_cast<size_t>(a)]);
        }
    }
    return page;
}

std::optional<int> EepromEditor::celladdress(int row, int column) const {
    if (row < 0 || row >= kEepromRows || column < 0 || column >= kEepromColumns) return std::nullopt;
    const int address = (std::min(scroll_, scrollmax()) + row) * kEepromColumns + column;
    if (address >= m_.eepromsize) return std::nullopt;
    return address;
}

bool EepromEditor::entercell(int address, const std::string& text) {
    if (address < 0 || address >= m_.eepromsize) return false;
    std::string padded = text.empty() ? "00" : text;
    if (padded.size() == 1) padded.insert(0, "0");
    const std::optional<uint32_t> value = paddedhex(padded, 2);
    if (!value) return false;
    m_.eeprommem[static_cast<size_t>(address)] = static_cast<uint8_t>(*value);
    return true;
}

void EepromEditor::erase(uint8_t value) { std::fill(m_.eeprommem.begin(), m_.eeprommem.end(), value); }

}  // namespace velmora
