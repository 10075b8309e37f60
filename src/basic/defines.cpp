#include "basic/defines.h"

#include <initializer_list>

#include "basic/symbols.h"

namespace velmora {

namespace {

enum class Range {
    Values,    // one of the listed values
    Span,      // low to high
    Port,      // the output register of a port the model has
    PortOrNone,  // 0, or a port
    Clock,
    AdcClock,
    AdcVref,
    AdcSample,
};

struct Parameter {
    const char* name;
    Range range;
    int low = 0, high = 0;
    std::initializer_list<int> values = {};
    int fallback = 0;  // default; ports take PORTB (or PORTC) below
    char defaultport = 0;
};

constexpr int kBitHigh = 7;

// Names, ranges and defaults; a default port is the model's PORTB or PORTC, 0 when absent.
const Parameter kParameters[] = {
    {"CLOCK_FREQUENCY", Range::Clock, 1, 100},
    {"ADC_CLOCK", Range::AdcClock, 0, 7, {}, 3},
    {"ADC_VREF", Range::AdcVref, 0, 0, {}, 0},
    {"ADC_SAMPLEUS", Range::AdcSample, 0, 255, {}, 20},
    {"LCD_DREG", Range::Port, 0, 0, {}, 0, 'B'},
    {"LCD_DBIT", Range::Values, 0, 0, {0, 4}, 4},
    {"LCD_RSREG", Range::Port, 0, 0, {}, 0, 'B'},
    {"LCD_RSBIT", Range::Span, 0, kBitHigh, {}, 3},
    {"LCD_EREG", Range::Port, 0, 0, {}, 0, 'B'},
    {"LCD_EBIT", Range::Span, 0, kBitHigh, {}, 2},
    {"LCD_RWREG", Range::PortOrNone, 0, 0, {}, 0},
    {"LCD_RWBIT", Range::Span, 0, kBitHigh, {}, 0},
    {"LCD_BITS", Range::Values, 0, 0, {4, 8}, 4},
    {"LCD_COMMANDUS", Range::Span, 100, 65535, {}, 5000},
    {"LCD_DATAUS", Range::Span, 50, 255, {}, 100},
    {"LCD_INITMS", Range::Span, 2, 65535, {}, 100},
    {"LCD_READ_BUSY_FLAG", Range::Values, 0, 0, {0, 1}, 0},
    {"LCD_LINES", Range::Values, 0, 0, {0, 1, 2, 4}, 0},
    {"LCD_CHARS", Range::Values, 0, 0, {0, 8, 16, 20, 24, 40}, 0},
    {"GLCD_DREG", Range::Port, 0, 0, {}, 0, 'B'},
    {"GLCD_RSREG", Range::Port, 0, 0, {}, 0, 'C'},
    {"GLCD_RSBIT", Range::Span, 0, kBitHigh, {}, 3},
    {"GLCD_EREG", Range::Port, 0, 0, {}, 0, 'C'},
    {"GLCD_EBIT", Range::Span, 0, kBitHigh, {}, 5},
    {"GLCD_RWREG", Range::Port, 0, 0, {}, 0, 'C'},
    {"GLCD_RWBIT", Range::Span, 0, kBitHigh, {}, 4},
    {"GLCD_CS1REG", Range::Port, 0, 0, {}, 0, 'C'},
    {"GLCD_CS1BIT", Range::Span, 0, kBitHigh, {}, 6},
    {"GLCD_CS2REG", Range::Port, 0, 0, {}, 0, 'C'},
    {"GLCD_CS2BIT", Range::Span, 0, kBitHigh, {}, 7},
    {"SEROUT_DELAYUS", Range::Span, 0, 65535, {}, 1000},
    {"ALLOW_MULTIPLE_HSEROPEN", Range::Values, 0, 0, {0, 1}, 0},
    {"ALLOW_ALL_BAUDRATES", Range::Values, 0, 0, {0, 1}, 0},
    {"I2CREAD_DELAYUS", Range::Span, 0, 65535, {}, 0},
    {"I2CCLOCK_STRETCH", Range::Span, 1, 10, {}, 1},
    {"1WIRE_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"1WIRE_BIT", Range::Span, 0, kBitHigh, {}, 0},
    {"SPI_CS_REG", Range::PortOrNone, 0, 0, {}, 0},
    {"SPI_CS_BIT", Range::Span, 0, kBitHigh, {}, 0},
    {"SPI_SCK_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"SPI_SCK_BIT", Range::Span, 0, kBitHigh, {}, 0},
    {"SPI_SDI_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"SPI_SDI_BIT", Range::Span, 0, kBitHigh, {}, 1},
    {"SPI_SDO_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"SPI_SDO_BIT", Range::Span, 0, kBitHigh, {}, 2},
    {"SPICLOCK_STRETCH", Range::Span, 1, 50, {}, 1},
    {"SPICLOCK_INVERT", Range::Values, 0, 0, {0, 1}, 0},
    {"SPICS_INVERT", Range::Values, 0, 0, {0, 1}, 0},
    {"COUNT_MODE", Range::Values, 0, 0, {1, 2}, 1},
    {"SIMULATION_WAITMS_VALUE", Range::Span, 0, 10, {}, 0},
    {"STEP_A_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"STEP_B_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"STEP_C_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"STEP_D_REG", Range::Port, 0, 0, {}, 0, 'B'},
    {"STEP_A_BIT", Range::Span, 0, kBitHigh, {}, 0},
    {"STEP_B_BIT", Range::Span, 0, kBitHigh, {}, 1},
    {"STEP_C_BIT", Range::Span, 0, kBitHigh, {}, 2},
    {"STEP_D_BIT", Range::Span, 0, kBitHigh, {}, 3},
    {"STEP_MODE", Range::Values, 0, 0, {1, 2}, 1},
};

const char* const kInvalidValue = ": Invalid value of parameter.";
const char* const kInvalidForDevice = ": Invalid parameter for the selected device.";

int portaddress(const BasicModel& model, char letter) {
    const std::string name = std::string("PORT") + letter;
    for (const BasicRegisterName& reg : model.registers)
        if (reg.name == name) return reg.address;
    return 0;
}

bool contains(std::initializer_list<int> values, int value) {
    for (int v : values)
        if (v == value) return true;
    return false;
}

bool noadc(const CompileContext& ctx) { return ctx.model->adcclass <= 1; }

// False after the error.
bool inrange(CompileContext& ctx, const Parameter& p, int value) {
    switch (p.range) {
    case Range::Values:
        return contains(p.values, value) || fail(ctx, kInvalidValue);
    case Range::Span:
    case Range::Clock:
        return (value >= p.low && value <= p.high) || fail(ctx, kInvalidValue);
    case Range::Port:
        return isport(ctx, value) || fail(ctx, kInvalidValue);
    case Range::PortOrNone:
        return value == 0 || isport(ctx, value) || fail(ctx, kInvalidValue);
    case Range::AdcClock:
    case Range::AdcSample:
        if (noadc(ctx)) return fail(ctx, kInvalidForDevice);
        return (value >= p.low && value <= p.high) || fail(ctx, kInvalidValue);
    case Range::AdcVref: {
        const int adc = ctx.model->adcclass;
        if (noadc(ctx) || adc == 5) return fail(ctx, kInvalidForDevice);
        const int high = adc == 4 || adc == 8 ? 7 : 3;
        return (value >= 0 && value <= high) || fail(ctx, kInvalidValue);
    }
    }
    return false;
}

}  // namespace

void definedefaults(CompileContext& ctx) {
    ctx.defines.clear();
    for (const Parameter& p : kParameters)
        ctx.defines[p.name] = p.defaultport ? portaddress(*ctx.model, p.defaultport) : p.fallback;
    ctx.clockmhz = ctx.model->clockmhz;
    ctx.clockdefined = false;
}

int defineparameter(const CompileContext& ctx, const std::string& name) {
    const auto it = ctx.defines.find(name);
    return it == ctx.defines.end() ? 0 : it->second;
}

bool definestatement(CompileContext& ctx, const std::string& name, const std::string& valuetext) {
    std::string value = valuetext;
    if (symboltype(ctx, value) != kTypeNone) value = std::to_string(symboladdress(ctx, value));
    if (symboltype(ctx, value) != kTypeNone) return fail(ctx, ": Argument must be constant.");
    if (!constantword(ctx, value)) return false;
    const Parameter* parameter = nullptr;
    for (const Parameter& p : kParameters)
        if (name == p.name) parameter = &p;
    if (!parameter) return fail(ctx, ": Unknown parameter.");
    const int number = std::stoi(value);
    if (!inrange(ctx, *parameter, number)) return false;
    const bool lines = name == "LCD_LINES", chars = name == "LCD_CHARS";
    if ((lines || chars) &&
        (lines ? number : defineparameter(ctx, "LCD_LINES")) * (chars ? number : defineparameter(ctx, "LCD_CHARS")) > 80)
        return fail(ctx, ": The total number of characters is limited to 80.");
    ctx.defines[name] = number;
    if (parameter->range == Range::Clock) {
        ctx.clockmhz = number;
        ctx.clockdefined = true;
    }
    return true;
}

}  // namespace velmora
