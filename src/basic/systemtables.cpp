#include "basic/systemtables.h"

#include "basic/symbols.h"
#include "core/hextext.h"

namespace velmora {

namespace {

std::string hexaddress(int address) { return "0x" + hexdigits(static_cast<uint32_t>(address), 2); }

std::string table(const char* header, int dashes) {
    return std::string(header) + "\n" + std::string(dashes, '-') + "\n";
}

// The address of a register of the model by name, or "" for a name it does not have.
std::string registeraddress(const BasicModel& model, const std::string& name) {
    for (const BasicRegisterName& reg : model.registers)
        if (reg.name == name) return hexaddress(reg.address);
    return {};
}

}  // namespace

std::string systemvariablestable(const BasicModel& model) {
    CompileContext ctx;
    ctx.model = &model;
    loadsystemsymbols(ctx);
    std::string text = table("Name\tType\tAddress", 24);
    for (const SymbolEntry& entry : ctx.symbols) {
        if (entry.type == kTypeBit)
            text += entry.name + "\tBit\t" + hexaddress(entry.address / 100) + "," +
                    std::to_string(entry.address % 100);
        else
            text += entry.name + "\tByte\t" + hexaddress(entry.address);
        text += "\n";
    }
    return text;
}

std::string systembitnamestable(const BasicModel& model) {
    std::string text = table("Name\tValue\tRegister", 25);
    for (const BasicBitName& bit : model.bitnames)
        text += bit.name + "\t" + std::to_string(bit.bit) + "\t" + bit.owner + "(" + registeraddress(model, bit.owner) +
                ")\n";
    return text;
}

std::string systeminterruptstable(const BasicModel& model) {
    std::string text = table("Name\tVector\tDescription", 28);
    for (const BasicInterrupt& interrupt : model.interrupts)
        text += interrupt.name + "\t0x" + hex4(static_cast<uint32_t>(interrupt.vector)) + "\t" + interrupt.description +
                "\n";
    return text;
}

}  // namespace velmora
