#include "basic/pins.h"

#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"

namespace velmora {

namespace {

int32_t byteof(int32_t bitaddress) { return bitaddress / 100; }
int bitof(int32_t bitaddress) { return bitaddress % 100; }

}  // namespace

bool pinstatement(CompileContext& ctx, PinAction action, const std::string& pin) {
    const Operand op = operandof(ctx, pin);
    if (op.type != kTypeBit) return fail(ctx, ": Argument must be Bit data type.");
    const int32_t address = byteof(op.address);
    if (isport(ctx, address)) {
        // The port's own names, which the assembler resolves; every use makes the pin an output.
        const std::string letter = portletter(ctx, address), bit = "," + std::to_string(bitof(op.address));
        static const char* const kRegister[] = {"SBI PORT", "CBI PORT", "SBI PIN"};
        emitcode(ctx, kRegister[static_cast<int>(action)] + letter + bit);
        emitcode(ctx, "SBI DDR" + letter + bit);
        return true;
    }
    switch (action) {
    case PinAction::High: setbit(ctx, op.address, "R16"); break;
    case PinAction::Low: clearbit(ctx, op.address, "R16"); break;
    case PinAction::Toggle: {
        const Operand byte{kTypeByte, "", address};
        loadoperandbyte0(ctx, byte, "R16");
        emitcode(ctx, "LDI R17," + immediate(1 << bitof(op.address)));
        emitcode(ctx, "EOR R16,R17");
        storeresultbyte0(ctx, kTypeByte, address, "R16");
        break;
    }
    }
    return true;
}

bool configstatement(CompileContext& ctx, const std::string& target, const std::string& direction) {
    // The statement chain lets only the two words through.
    const bool output = direction == "Output";
    const Operand op = operandof(ctx, target);
    const bool bit = op.type == kTypeBit;
    const int32_t address = bit ? byteof(op.address) : op.address;
    if ((!bit && op.type != kTypeByte) || !isport(ctx, address)) return fail(ctx, ": Port register or bit expected.");
    const std::string letter = portletter(ctx, address);
    if (bit) {
        emitcode(ctx, std::string(output ? "SBI DDR" : "CBI DDR") + letter + "," + std::to_string(bitof(op.address)));
    } else if (output) {
        emitcode(ctx, "SER R16");
        emitcode(ctx, "OUT DDR" + letter + ",R16");
    } else {
        emitcode(ctx, "OUT DDR" + letter + ",R15");
    }
    return true;
}

}  // namespace velmora
