#include "basic/registerscan.h"

#include "basic/compilecontext.h"
#include "core/textcase.h"

namespace velmora {

namespace {

bool has(const std::string& text, const std::string& what) { return text.find(what) != std::string::npos; }

// Sole or last operand, or first operand.
bool inoperand(const std::string& text, const std::string& name) {
    return has(text, " " + name + "\r\n") || has(text, " " + name + ",") || has(text, "," + name + "\r\n");
}

bool pointerform(const std::string& text, char pair) {
    const std::string name(1, pair);
    if (inoperand(text, name) || inoperand(text, "-" + name)) return true;
    return has(text, " " + name + "+") || has(text, "," + name + "+");
}

}  // namespace

bool namesregister(const std::string& text, int n) {
    // Hand-written assembler may be in lower case; generated text is upper case already.
    const std::string upper = uppercase(text);
    if (inoperand(upper, "R" + std::to_string(n))) return true;
    if (n < 26 || n > 31) return false;
    static const char* const kHalves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    return inoperand(upper, kHalves[n - 26]) || pointerform(upper, "XYZ"[(n - 26) / 2]);
}

void registerusagescan(const std::string& text, std::vector<int>& memoryusage) {
    for (int n = 0; n < 32 && n < static_cast<int>(memoryusage.size()); ++n)
        if (namesregister(text, n)) memoryusage[static_cast<size_t>(n)] = kMemCodeRegister;
}

}  // namespace velmora
