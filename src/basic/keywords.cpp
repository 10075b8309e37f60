#include "basic/keywords.h"

namespace velmora {

const std::vector<std::string_view>& basickeywords() {
    static const std::vector<std::string_view> words = {
        "ASM", "Sqr", "Dim", "As", "Bit", "Byte", "Word", "Long", "Not", "Or", "And", "Xor", "Nor", "Nand", "Nxor",
        "While", "Wend", "If", "Then", "Else", "Endif", "Select", "Case", "EndSelect", "For", "To", "Step",
        "Next", "Goto", "Read", "Write", "WaitMs", "Mod", "LB", "HB", "LW", "HW", "True", "False", "Gosub",
        "Return", "End", "Symbol", "Low", "High", "Toggle", "On", "Interrupt", "Resume", "Enable", "Disable",
        "WaitUs", "Adcin", "Define", "ShiftLeft", "ShiftRight", "Lcdinit", "Lcdout", "Lcdcmdout", "Lcddefchar",
        "LcdLeft", "LcdRight", "LcdShiftLeft", "LcdShiftRight", "LcdClear", "LcdHome", "LcdDisplayOn",
        "LcdDisplayOff", "LcdCurOff", "LcdCurBlink", "LcdCurUnderline", "LcdCurBlinkUnderline", "LcdLine1Home",
        "LcdLine2Home", "LcdLine3Home", "LcdLine4Home", "LcdLine1Clear", "LcdLine2Clear", "LcdLine3Clear",
        "LcdLine4Clear", "LcdLine1Pos", "LcdLine2Pos", "LcdLine3Pos", "LcdLine4Pos", "Serout", "CrLf", "Lf",
        "Hseropen", "Hserout", "Hserin", "Hserget", "Serin", "SerinInv", "SeroutInv", "I2CWrite", "I2CRead",
        "LookUp", "Const", "I2CWrite1", "I2CRead1", "Reserve", "I2CPrepare", "I2CStop", "I2CStart", "I2CSend",
        "I2CRecA", "I2CRecN", "I2CReceiveAck", "I2CReceiveNAck", "GLcdinit", "GLcdout", "GLcdcmdout",
        "GLcdclear", "GLcdpset", "GLcdin", "GLcdposition", "GLcdwrite", "GLcdpreset", "GLcdclean", "PWMon",
        "PWMoff", "PWMduty", "ServoIn", "ServoOut", "1wireInit", "1wireSendByte", "1wireGetByte",
        "1wireSendBit", "1wireGetBit", "DS18S20Start", "DS18S20ReadT", "Proc", "Function", "Call", "Exit",
        "Halt", "Break", "Pointer", "StartFromZero", "SPIPrepare", "SPISend", "SPISendBits", "SPIReceive",
        "SPICSOn", "SPICSOff", "Count", "FreqOut", "StepHold", "StepCW", "StepCCW", "Config", "Input", "Output",
    };
    return words;
}

const std::vector<std::string_view>& basicdefinenames() {
    static const std::vector<std::string_view> names = {
        "CLOCK_FREQUENCY", "ADC_CLOCK", "ADC_VREF", "ADC_SAMPLEUS", "LCD_DREG", "LCD_DBIT", "LCD_RSREG",
        "LCD_RSBIT", "LCD_EREG", "LCD_EBIT", "LCD_RWREG", "LCD_RWBIT", "LCD_BITS", "LCD_COMMANDUS",
        "LCD_DATAUS", "LCD_INITMS", "LCD_READ_BUSY_FLAG", "LCD_LINES", "LCD_CHARS", "GLCD_DREG", "GLCD_RSREG",
        "GLCD_RSBIT", "GLCD_EREG", "GLCD_EBIT", "GLCD_RWREG", "GLCD_RWBIT", "GLCD_CS1REG", "GLCD_CS1BIT",
        "GLCD_CS2REG", "GLCD_CS2BIT", "SEROUT_DELAYUS", "ALLOW_MULTIPLE_HSEROPEN", "ALLOW_ALL_BAUDRATES",
        "I2CREAD_DELAYUS", "I2CCLOCK_STRETCH", "1WIRE_REG", "1WIRE_BIT", "SPI_CS_REG", "SPI_CS_BIT",
        "SPI_SCK_REG", "SPI_SCK_BIT", "SPI_SDI_REG", "SPI_SDI_BIT", "SPI_SDO_REG", "SPI_SDO_BIT",
        "SPICLOCK_STRETCH", "SPICLOCK_INVERT", "SPICS_INVERT", "COUNT_MODE", "SIMULATION_WAITMS_VALUE",
        "STEP_A_REG", "STEP_B_REG", "STEP_C_REG", "STEP_D_REG", "STEP_A_BIT", "STEP_B_BIT", "STEP_C_BIT",
        "STEP_D_BIT", "STEP_MODE",
    };
    return names;
}

std::vector<std::string> basickeywordlist(const std::vector<std::string>& modelnames) {
    std::vector<std::string> list(basickeywords().begin(), basickeywords().end());
    list.insert(list.end(), basicdefinenames().begin(), basicdefinenames().end());
    list.insert(list.end(), modelnames.begin(), modelnames.end());
    return list;
}

}  // namespace velmora
