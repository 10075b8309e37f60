#include "basic/adc.h"

#include "basic/defines.h"
#include "basic/delays.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

// The highest channel number a kind's multiplexer takes.
int channellimit(int adcclass) {
    switch (adcclass) {
    case 2:
    case 8: return 63;
    case 4: return 15;
    case 5: return 7;
    default: return 31;
    }
}

bool badchannel(CompileContext& ctx) { return fail(ctx, ": Invalid argument for ADC channel number."); }

// A Byte result takes the conversion's upper eight bits, left-adjusted by ADLAR.
void alignment(CompileContext& ctx, bool left) {
    switch (ctx.model->adcclass) {
    case 2: emitcode(ctx, left ? "SBI ADCSRB,ADLAR" : "CBI ADCSRB,ADLAR"); break;
    case 3:
    case 4:
    case 7:
    case 8: emitcode(ctx, left ? "SBI ADMUX,ADLAR" : "CBI ADMUX,ADLAR"); break;
    case 6:
        emitcode(ctx, "LDS R16,ADMUX");
        emitcode(ctx, left ? "SBR R16,0x20" : "CBR R16,0x20");
        emitcode(ctx, "STS ADMUX,R16");
        break;
    default: break;  // no ADLAR: shifted below
    }
}

}  // namespace

bool adcinstatement(CompileContext& ctx, const std::string& arguments) {
    const int adcclass = ctx.model->adcclass;
    if (adcclass <= 1)
        return fail(ctx, ": The selected microcontroller model does not feature A/D converter (ADC) module.");
    requestroutine(ctx, kRoutineWaitUsByte);
    requestroutine(ctx, kRoutineAdc);
    std::string list = arguments;
    const std::string channeltext = trimblanks(nextargument(list));
    const std::string resulttext = trimblanks(nextargument(list));
    const Operand channel = operandof(ctx, channeltext);
    if (channel.type == kTypeBit) return badchannel(ctx);
    if (channel.type == kTypeNone) {
        std::string value = channeltext;
        if (!constantbyte(ctx, value)) return false;
        if (std::stoi(value) > channellimit(adcclass)) return badchannel(ctx);
    }
    const Operand result = operandof(ctx, resulttext);
    if (result.type == kTypeNone || result.type == kTypeBit || !list.empty())
        return fail(ctx, ": Invalid argument for ADC result.");
    const bool bytewide = bytesoftype(result.type) == 1;
    alignment(ctx, bytewide);
    if (!loadoperandbyte0(ctx, channel, "R31")) return false;
    emitcode(ctx, "RCALL A001");
    const std::string in = adcclass == 6 ? "LDS R16," : "IN R16,";
    if (bytewide && adcclass == 5) {
        // Ten bits scaled to eight: ADCH's two bits on top of ADCL's upper six.
        for (const char* line : {"IN R17,ADCL", "LSR R17", "LSR R17", "IN R16,ADCH", "LSL R16", "LSL R16", "LSL R16",
                                 "LSL R16", "LSL R16", "LSL R16", "OR R16,R17"})
            emitcode(ctx, line);
        storeresultbyte0(ctx, result.type, result.address, "R16");
    } else if (bytewide) {
        emitcode(ctx, in + "ADCH");
        storeresultbyte0(ctx, result.type, result.address, "R16");
    } else {
        emitcode(ctx, in + "ADCL");
        storeresultbyte0(ctx, result.type, result.address, "R16");
        emitcode(ctx, in + "ADCH");
        storeresultbyte1(ctx, result.type, result.address, "R16");
        for (int k = 2; k < bytesoftype(result.type); ++k) storeresultbyte(ctx, k, result.type, result.address, "R15");
    }
    return true;
}

RoutineText adcroutine(const CompileContext& ctx) {
    const int adcclass = ctx.model->adcclass;
    const int vref = defineparameter(ctx, "ADC_VREF");
    const int clock = defineparameter(ctx, "ADC_CLOCK");
    RoutineText text{kRoutineAdc, "; Adcin Routine", {}};
    auto& lines = text.lines;
    const std::vector<std::string> keepadlar = {"IN R30,ADMUX", "ANDI R30,0x20", "OR R30,R31", "OUT ADMUX,R30"};
    switch (adcclass) {
    case 2: lines = {"ANDI R31,0x3F", "ORI R31," + immediate(vref * 64), "OUT ADMUX,R31"}; break;
    case 4:
        lines = {"ANDI R31,0x0F", "ORI R31," + immediate(vref / 4 * 16 + vref % 4 * 64)};
        lines.insert(lines.end(), keepadlar.begin(), keepadlar.end());
        break;
    case 8:
        lines = {"IN R30,ADCSRB", "BST R31,5", "BLD R30,3", vref / 4 == 0 ? "CBR R30,0x10" : "SBR R30,0x10",
                 "OUT ADCSRB,R30", "ANDI R31,0x1F", "ORI R31," + immediate(vref % 4 * 64)};
        lines.insert(lines.end(), keepadlar.begin(), keepadlar.end());
        break;
    case 5: lines = {"ANDI R31,0x07", "OUT ADMUX,R31"}; break;
    case 6:
        lines = {"ANDI R31,0x1F", "ORI R31," + immediate(vref * 64), "LDS R30,ADMUX", "ANDI R30,0x20", "OR R30,R31",
                 "STS ADMUX,R30"};
        break;
    default:  // 3, 7
        lines = {"ANDI R31,0x1F", "ORI R31," + immediate(vref * 64)};
        lines.insert(lines.end(), keepadlar.begin(), keepadlar.end());
        break;
    }
    lines.front() = "A001: " + lines.front();
    const std::vector<std::string> sample = waitusbytelines(ctx, defineparameter(ctx, "ADC_SAMPLEUS"));
    const std::string control = adcclass == 5 ? "ADCSR" : "ADCSRA";
    // ADEN and ADIF with the prescaler: the converter is on only while it converts.
    if (adcclass == 6) {
        lines.insert(lines.end(), {"LDI R30," + immediate(clock + 144), "STS ADCSRA,R30"});
        lines.insert(lines.end(), sample.begin(), sample.end());
        lines.insert(lines.end(), {"LDS R30,ADCSRA", "SBR R30,0x40", "STS ADCSRA,R30", "A002: LDS R30,ADCSRA",
                                   "SBRS R30,ADIF", "RJMP A002", "LDI R30," + immediate(clock + 16), "STS ADCSRA,R30",
                                   "RET"});
        return text;
    }
    lines.insert(lines.end(), {"LDI R30," + immediate(clock + 144), "OUT " + control + ",R30"});
    lines.insert(lines.end(), sample.begin(), sample.end());
    lines.insert(lines.end(), {"SBI " + control + ",ADSC", "A002: SBIS " + control + ",ADIF", "RJMP A002",
                               "SBI " + control + ",ADIF", "CBI " + control + ",ADEN", "RET"});
    return text;
}

}  // namespace velmora
