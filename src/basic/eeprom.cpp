#include "basic/eeprom.h"

#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

bool wideaddress(const CompileContext& ctx) { return ctx.model->eepromsize > 256; }

// Checks the address and loads it into R16 (and R17 on an EEPROM above 256 bytes); false
// after the error.
bool loadaddress(CompileContext& ctx, const std::string& text) {
    if (ctx.model->eeclass <= 1)
        return fail(ctx, ": The selected microcontroller model does not feature EEPROM data memory.");
    const Operand address = operandof(ctx, text);
    if (address.type == kTypeBit) return fail(ctx, ": Incorrect EEPROM address argument.");
    if (address.type == kTypeNone) {
        std::string value = text;
        if (!constantword(ctx, value)) return false;
        if (std::stoi(value) > ctx.model->eepromsize - 1) return fail(ctx, ": EEPROM address argument out of range.");
    }
    requestroutine(ctx, kRoutineEeprom);
    if (!loadoperandword0(ctx, address, "R16")) return false;
    if (wideaddress(ctx)) loadoperandbyte1(ctx, address, "R17");
    return true;
}

bool baddata(CompileContext& ctx) { return fail(ctx, ": Incorrect EEPROM data argument."); }

}  // namespace

bool readstatement(CompileContext& ctx, const std::string& arguments) {
    std::string list = arguments;
    const std::string address = trimblanks(nextargument(list));
    const Operand data = operandof(ctx, trimblanks(nextargument(list)));
    if (!loadaddress(ctx, address)) return false;
    if (data.type == kTypeNone || data.type == kTypeBit || !list.empty()) return baddata(ctx);
    emitcode(ctx, "RCALL EE01");
    storeresultbyte0(ctx, data.type, data.address, "R18");
    for (int k = 1; k < bytesoftype(data.type); ++k) storeresultbyte(ctx, k, data.type, data.address, "R15");
    return true;
}

bool writestatement(CompileContext& ctx, const std::string& arguments) {
    std::string list = arguments;
    const std::string address = trimblanks(nextargument(list));
    const std::string datatext = trimblanks(nextargument(list));
    const Operand data = operandof(ctx, datatext);
    if (!loadaddress(ctx, address)) return false;
    if (data.type == kTypeBit || datatext.empty() || !list.empty()) return baddata(ctx);
    if (!loadoperandbyte0(ctx, data, "R18")) return false;
    emitcode(ctx, "RCALL EE02");
    return true;
}

RoutineText eepromroutine(const CompileContext& ctx) {
    const int eeclass = ctx.model->eeclass;
    std::vector<std::string> address;
    if (eeclass == 4 || eeclass == 5) {
        address = {"OUT EEAR,R16"};
    } else {
        address = {"OUT EEARL,R16"};
        if (wideaddress(ctx)) address.push_back("OUT EEARH,R17");
    }
    RoutineText text{kRoutineEeprom, "; EEPROM Access Routine", {"EE01: " + address.front()}};
    auto& lines = text.lines;
    lines.insert(lines.end(), address.begin() + 1, address.end());
    lines.insert(lines.end(), {"SBI EECR,0", "IN R18,EEDR", "RET", "EE02: OUT EECR,R15"});
    lines.insert(lines.end(), address.begin(), address.end());
    lines.insert(lines.end(), {"OUT EEDR,R18", "SBI EECR,2", "SBI EECR,1", "EE03: SBIC EECR,1", "RJMP EE03", "RET"});
    return text;
}

}  // namespace velmora
