// Define parameters: values by symbol or number, ranges by kind, and the clock.

#include "basic/defines.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

struct Case {
    const char* model;
    const char* source;
    const char* error;  // empty when the program compiles
};

TEST(BasicDefines, EachParameterChecksItsRange) {
    const Case cases[] = {
        {"ATmega32", "Define LCD_BITS = 8", ""},
        {"ATmega32", "Define LCD_BITS = 6", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define LCD_DREG = PORTC", ""},
        {"ATmega32", "Define LCD_DREG = DDRC", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define LCD_RWREG = 0", ""},
        {"ATmega32", "Define LCD_EBIT = 8", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 20", ""},
        {"ATmega32", "Define LCD_LINES = 4\r\nDefine LCD_CHARS = 40",
         "Error in line 2: The total number of characters is limited to 80."},
        {"ATmega32", "Define LCD_CHARS = 40\r\nDefine LCD_LINES = 4",
         "Error in line 2: The total number of characters is limited to 80."},
        {"ATmega32", "Define LCD_COMMANDUS = 99", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define NOTHING = 1", "Error in line 1: Unknown parameter."},
        {"ATmega32", "Define LCD_BITS = 70000", "Error in line 1: Argument '70000' is not a valid Word type constant."},
        {"ATmega32", "Define CLOCK_FREQUENCY = 101", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define ADC_VREF = 3", ""},
        {"ATmega32", "Define ADC_VREF = 4", "Error in line 1: Invalid value of parameter."},
        {"ATtiny2313", "Define ADC_CLOCK = 1", "Error in line 1: Invalid parameter for the selected device."},
        {"ATtiny2313", "Define ADC_SAMPLEUS = 1", "Error in line 1: Invalid parameter for the selected device."},
        {"ATmega128", "Define LCD_DREG = PORTF", "Error in line 1: Invalid value of parameter."},
        {"ATmega32", "Define SIMULATION_WAITMS_VALUE = 10", ""},
        {"ATmega32", "Define STEP_MODE = 3", "Error in line 1: Invalid value of parameter."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const BasicCompileResult result = compilebasic(c.source, c.model);
        EXPECT_EQ(result.error, c.error);
    }
}

TEST(BasicDefines, DefaultsFollowTheModelsPorts) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega32");
    definedefaults(ctx);
    const std::pair<const char*, int> cases[] = {
        {"LCD_DREG", 0x38}, {"GLCD_RSREG", 0x35}, {"LCD_EBIT", 2}, {"LCD_COMMANDUS", 5000},
        {"STEP_D_BIT", 3},  {"ADC_CLOCK", 3},     {"LCD_RWREG", 0}, {"SEROUT_DELAYUS", 1000},
    };
    for (const auto& [name, value] : cases) EXPECT_EQ(defineparameter(ctx, name), value) << name;
    ctx.model = &basicmodel("ATtiny13");  // no PORTC
    definedefaults(ctx);
    EXPECT_EQ(defineparameter(ctx, "GLCD_RSREG"), 0);
}

TEST(BasicDefines, ClockFrequencySetsTheClock) {
    EXPECT_EQ(compilebasic("Define CLOCK_FREQUENCY = 8").definedclock, 8);
    EXPECT_EQ(compilebasic("' no clock").definedclock, 0);
}

}  // namespace
}  // namespace velmora::test
