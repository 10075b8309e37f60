#include "debug/stackviewer.h"

#include "core/hextext.h"
#include "debug/memorytext.h"

namespace velmora {

namespace {
constexpr int kSmallSramSize = 256;   // below it SP has no high byte to show
constexpr int kShortAddressSpace = 4097;  // three address digits reach every cell
}  // namespace

int StackViewer::stackpointer() const {
    const int low = m_.datamem[kSplAddress];
    const int high = m_.roles.sph != 0 ? m_.datamem[kSphAddress] : 0;
    return low | (high << 8);
}

std::string StackViewer::row(int address) const {
    if (address < 96 + m_.extendedio || address > m_.dataspacesize - 1) return "";
    const uint8_t value = m_.datamem[static_cast<size_t>(address)];
    // The address column keeps one width: a fourth digit takes a blank of the gap.
    const std::string where = m_.dataspacesize <= kShortAddressSpace
                                  ? dollarhex(static_cast<uint32_t>(address), 3) + "      "
                                  : dollarhex(static_cast<uint32_t>(address), 4) + "     ";
    return where + dollarhex(value, 2) + "          " + binarydigits(value, 8);
}

StackPage StackViewer::page() const {
    StackPage page;
    const bool wide = m_.sramsize >= kSmallSramSize;
    page.label = wide ? " Stack Pointer (SPH:SPL):" : " Stack Pointer (SPL):";
    page.sp = stackpointer();
    for (int i = 0; i < kStackRows; ++i) page.rows[i] = row(page.sp + kStackRows - 1 - i);
    page.pushrow = row(page.sp - 1);
    page.stekpoint = wide ? dollarhex(static_cast<uint32_t>(page.sp), 4) : dollarhex(static_cast<uint32_t>(page.sp), 2);
    return page;
}

}  // namespace velmora
