#pragma once
// Every value name of the settings store with its default, in one place, so that no two
// windows coin the same name. Fixed names are constants; families of numbered names are
// patterns in which "#" stands for the number or letter (settingname(kLedPort, 3) is
// "LED3 Port"). settingtable() lists every name that exists, with its default.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/events.h"

namespace velmora {

// Fills the "#" of a pattern.
std::string settingname(std::string_view pattern, std::string_view fill);
std::string settingname(std::string_view pattern, int number);

namespace settingnames {

// Main window and simulation.
inline constexpr char kLastPath[] = "Last Path";
inline constexpr char kSavePositions[] = "Save Positions";
inline constexpr char kClockFrequency[] = "Clock Frequency";
inline constexpr char kEepromWriteTime[] = "EEPROM Write Time";
inline constexpr char kAdConversionTime[] = "A/D Conversion Time";
inline constexpr char kUartTime[] = "UART Transmit/Receive Time";
inline constexpr char kSimulationRate[] = "Simulation Rate";
inline constexpr char kUltimateTimer[] = "Ultimate Timer";
inline constexpr char kUnprogrammedBitValue[] = "Unprogrammed Bit Value";
inline constexpr char kCompactView[] = "Compact View";
inline constexpr char kInfiniteLoopStop[] = "Infinite Loop Stop";
inline constexpr char kBasicProgramTracking[] = "Basic Program Tracking";
inline constexpr char kShowConfirmations[] = "Show Confirmations";
inline constexpr char kShowMemoryUsage[] = "Show Memory Usage";
inline constexpr char kPreserveInputStates[] = "Preserve Input States";
inline constexpr char kUseVoltageForAnalogInputs[] = "Use Voltage For Analog Inputs";
inline constexpr char kAnalogSliderMode[] = "Analog Slider Mode";
inline constexpr char kListIoFirst[] = "List IO First";
inline constexpr char kSaveAlwaysOnTop[] = "Save Always On Top";
inline constexpr char kMicrocontrollerModel[] = "Microcontroller Model";
inline constexpr char kExternalModule[] = "External Module #";        // 1 to 5
inline constexpr char kSimulationDuration[] = "Simulation Duration #";  // 0, -1, -2
inline constexpr char kAlternativeSfrModel[] = "Alternative SFR Model";
inline constexpr char kAlternativeSfrList1[] = "Alternative SFR List1";
inline constexpr char kAlternativeSfrList2[] = "Alternative SFR List2";
inline constexpr char kMessageDuration[] = "Message Duration";
inline constexpr char kColorTheme[] = "Color Theme";
inline constexpr char kColorThemeBorder[] = "Color Theme Border";
inline constexpr char kGdbPort[] = "GDB Port";

// Window geometry and Always On Top, by window number.
inline constexpr char kWindowLeft[] = "Window# Left";
inline constexpr char kWindowTop[] = "Window# Top";
inline constexpr char kWindowWidth[] = "Window# Width";
inline constexpr char kWindowHeight[] = "Window# Height";
inline constexpr char kAssemblerDivider[] = "Window17 Position";
inline constexpr char kOnTop[] = "On Top #";

// Auto start: window flags, file flags and the last files.
inline constexpr char kAutoStartProgram[] = "Auto Start Program";
inline constexpr char kAutoStartEeprom[] = "Auto Start Eeprom";
inline constexpr char kAutoStartStack[] = "Auto Start Stack";
inline constexpr char kAutoStartView[] = "Auto Start View";
inline constexpr char kAutoStartAlternative[] = "Auto Start Alternative";
inline constexpr char kAutoStartBreak[] = "Auto Start Break";
inline constexpr char kAutoStartSpecial[] = "Auto Start Special";
inline constexpr char kAutoStartAssembler[] = "Auto Start Assembler";
inline constexpr char kAutoStartCompiler[] = "Auto Start Compiler";
inline constexpr char kAutoStartLed[] = "Auto Start Led";
inline constexpr char kAutoStartKeypad[] = "Auto Start Keypad";
inline constexpr char kAutoStartLcd[] = "Auto Start Lcd";
inline constexpr char kAutoStartGlcd[] = "Auto Start Glcd";
inline constexpr char kAutoStartStep[] = "Auto Start Step";
inline constexpr char kAutoStartI2c[] = "Auto Start I2C";
inline constexpr char kAutoStartUart[] = "Auto Start Uart";
inline constexpr char kAutoStartTerminal[] = "Auto Start Terminal";
inline constexpr char kAutoStartSoft[] = "Auto Start Soft";
inline constexpr char kAutoStartOscope[] = "Auto Start Oscope";
inline constexpr char kAutoStartSiggen[] = "Auto Start Siggen";
inline constexpr char kAutoStartSegment[] = "Auto Start Segment";
inline constexpr char kAutoStartWatch[] = "Auto Start Watch";
inline constexpr char kAutoStartHex[] = "Auto Start Hex";
inline constexpr char kAutoStartBas[] = "Auto Start Bas";
inline constexpr char kAutoStartAsm[] = "Auto Start Asm";
inline constexpr char kAutoStartRemember[] = "Auto Start Remember";
inline constexpr char kAutoStartHexFile[] = "Auto Start Hex File";
inline constexpr char kAutoStartBasFile[] = "Auto Start Bas File";
inline constexpr char kAutoStartAsmFile[] = "Auto Start Asm File";

// Assembler, disassembler and compiler.
inline constexpr char kAvrAssemblerPath[] = "AVR Assembler Path";
inline constexpr char kMpasmwinListing[] = "MPASMWIN Listing";
inline constexpr char kListingWithoutOpcodes[] = "Listing Without Opcodes";
inline constexpr char kPrinterFontName[] = "Printer Font Name";
inline constexpr char kPrinterFontSize[] = "Printer Font Size";
inline constexpr char kHoldPcInFocus[] = "Hold PC In Focus";
inline constexpr char kAllowArbitraryBitNames[] = "Allow Arbitrary Use of Official Bit Names";

// Source editors; "#" is the editor's prefix letter, 'C' (BASIC) or 'A' (assembler).
inline constexpr char kBasicEditor[] = "C";
inline constexpr char kAssemblerEditor[] = "A";
inline constexpr char kEditorFontName[] = "# Font Name";
inline constexpr char kEditorFontSize[] = "# Font Size";
inline constexpr char kEditorColoringEnabled[] = "# Coloring Enabled";
inline constexpr char kEditorBackgroundColor[] = "# Background Color";
inline constexpr char kEditorTextColor[] = "# Text Color";
inline constexpr char kEditorKeywordColor[] = "# Keyword Color";
inline constexpr char kEditorCommentColor[] = "# Comment Color";
inline constexpr char kEditorErrorColor[] = "# Error Color";
inline constexpr char kEditorLineNumbersBackgroundColor[] = "# Line Numbers Background Color";
inline constexpr char kEditorLineNumbersTextColor[] = "# Line Numbers Text Color";
inline constexpr char kEditorLineNumbersEnabled[] = "# Line Numbers Enabled";
inline constexpr char kEditorTabSize[] = "# Tab Size";
inline constexpr char kEditorScrollWheelStep[] = "# Scroll Wheel Step";
inline constexpr char kEditorUndoLevelsNumber[] = "# Undo Levels Number";
// BASIC editor only.
inline constexpr char kEditorStringColor[] = "# String Color";
inline constexpr char kEditorAsmColor[] = "# ASM Color";
inline constexpr char kEditorAutoFormatTextEnabled[] = "# Auto Format Text Enabled";
inline constexpr char kEditorAutoCaseControlEnabled[] = "# Auto Case Control Enabled";
inline constexpr char kEditorCommentSpace[] = "# Comment Space";
inline constexpr char kEditorProcedureSeparatorWidth[] = "# Procedure Separator Width";

// LCD Module.
inline constexpr char kLcdColorScheme[] = "LCD Color Scheme";
inline constexpr char kLcdLines[] = "LCD Lines";
inline constexpr char kLcdCharacters[] = "LCD Characters";
inline constexpr char kLcdDataLinesPort[] = "LCD Data Lines Port";
inline constexpr char kLcdDataLinesInterface[] = "LCD Data Lines Interface";
inline constexpr char kLcdRsLinePort[] = "LCD RS Line Port";
inline constexpr char kLcdRsLineBit[] = "LCD RS Line Bit";
inline constexpr char kLcdELinePort[] = "LCD E Line Port";
inline constexpr char kLcdELineBit[] = "LCD E Line Bit";
inline constexpr char kLcdRwLinePort[] = "LCD R/W Line Port";
inline constexpr char kLcdRwLineBit[] = "LCD R/W Line Bit";
inline constexpr char kLcdBusyDelayInit[] = "LCD Busy Delay Init";
inline constexpr char kLcdBusyDelayCmd[] = "LCD Busy Delay Cmd";
inline constexpr char kLcdBusyDelayData[] = "LCD Busy Delay Data";

// Graphical LCD; "#" of the line names is CS1, CS2, RS, E or R/W.
inline constexpr char kGlcdColorScheme[] = "GLCD Color Scheme";
inline constexpr char kGlcdDataLinesPort[] = "GLCD Data Lines Port";
inline constexpr char kGlcdLinePort[] = "GLCD # Line Port";
inline constexpr char kGlcdLineBit[] = "GLCD # Line Bit";
inline constexpr char kGlcdBusyDelayInit[] = "GLCD Busy Delay Init";
inline constexpr char kGlcdBusyDelayCmd[] = "GLCD Busy Delay Cmd";
inline constexpr char kGlcdBusyDelayData[] = "GLCD Busy Delay Data";
inline constexpr char kGlcdDisplayMode[] = "GLCD Display Mode";
inline constexpr char kGlcdContinuousUpdate[] = "GLCD Continuous Update";

// LED board, LEDs 0 to 7.
inline constexpr char kLedPort[] = "LED# Port";
inline constexpr char kLedBit[] = "LED# Bit";
inline constexpr char kLedColor[] = "LED# Color";

// Keypad: columns KOL0 to KOL3, rows RED0 to RED3.
inline constexpr char kKeypadColumnPort[] = "KOL# Port";
inline constexpr char kKeypadColumnBit[] = "KOL# Bit";
inline constexpr char kKeypadRowPort[] = "RED# Port";
inline constexpr char kKeypadRowBit[] = "RED# Bit";

// Stepper, coils A to D.
inline constexpr char kStepperCoilPort[] = "Stepper Coil # Port";
inline constexpr char kStepperCoilBit[] = "Stepper Coil # Bit";
inline constexpr char kStepperHalfStep[] = "Stepper Half Step";

// I2C EEPROM.
inline constexpr char kI2cSdaLinePort[] = "I2C EEPROM SDA Line Port";
inline constexpr char kI2cSdaLinePin[] = "I2C EEPROM SDA Line Pin";
inline constexpr char kI2cSclLinePort[] = "I2C EEPROM SCL Line Port";
inline constexpr char kI2cSclLinePin[] = "I2C EEPROM SCL Line Pin";
inline constexpr char kI2cEepromType[] = "I2C EEPROM Type";

// Serial windows.
inline constexpr char kTerminalHex[] = "Terminal Hex";
inline constexpr char kTerminalCommPort[] = "Terminal Comm Port";
inline constexpr char kTerminalBaudRate[] = "Terminal Baud Rate";
inline constexpr char kUartCharsDelayTime[] = "UART Chars Delay Time";
inline constexpr char kHardwareUartHex[] = "Hardware UART Hex";
inline constexpr char kSoftwareUartRxLinePort[] = "Software UART RX Line Port";
inline constexpr char kSoftwareUartRxLinePin[] = "Software UART RX Line Pin";
inline constexpr char kSoftwareUartTxLinePort[] = "Software UART TX Line Port";
inline constexpr char kSoftwareUartTxLinePin[] = "Software UART TX Line Pin";
inline constexpr char kSoftwareUartBaudRate[] = "Software UART Baud Rate";
inline constexpr char kSoftwareUartInvertedLevels[] = "Software UART Inverted Levels";
inline constexpr char kSoftwareUartHex[] = "Software UART Hex";

// Oscilloscope, channels 1 to 4.
inline constexpr char kOscilloscopeMode[] = "Oscilloscope Mode";
inline constexpr char kOscilloscopeRefresh[] = "Oscilloscope Refresh";
inline constexpr char kOscilloscopeNumberOfPoints[] = "Oscilloscope Number Of Points";
inline constexpr char kOscilloscopeOutputColor[] = "Oscilloscope Output Color";
inline constexpr char kOscilloscopeInputColor[] = "Oscilloscope Input Color";
inline constexpr char kOscilloscopeChannelPort[] = "Oscilloscope Channel # Port";
inline constexpr char kOscilloscopeChannelPin[] = "Oscilloscope Channel # Pin";
inline constexpr char kOscilloscopeChannelPullUp[] = "Oscilloscope Channel # Pull-up";

// Signal generator, generators 1 to 4.
inline constexpr char kSignalGeneratorPort[] = "Signal Generator # Port";
inline constexpr char kSignalGeneratorPin[] = "Signal Generator # Pin";
inline constexpr char kSignalGeneratorPeriod[] = "Signal Generator # Period";
inline constexpr char kSignalGeneratorDutyCycle[] = "Signal Generator # Duty Cycle";

// Seven-segment panel. "#" is the display digit 1 to 4 for the enable line, and the digit
// followed by the segment letter a to h ("1a") for a segment line.
inline constexpr char kSevenSegmentPort[] = "7-Segment # Port";
inline constexpr char kSevenSegmentPin[] = "7-Segment # Pin";
inline constexpr char kSevenSegmentInv[] = "7-Segment # Inv";
inline constexpr char kSevenSegmentAbcInv[] = "7-Segment #abc Inv";
inline constexpr char kSevenSegmentLedColor[] = "7-Segment LED Color";

// Watch Variables.
inline constexpr char kWatchHexValues[] = "Watch HEX Values";
inline constexpr char kWatchConfirmDelete[] = "Watch Confirm Delete";

// Microcontroller View: alternative pin functions removed from the pin names.
inline constexpr char kRemovePcintx[] = "Remove PCINTx";
inline constexpr char kRemoveAdcx[] = "Remove ADCx";
inline constexpr char kRemoveAinx[] = "Remove AINx";
inline constexpr char kRemoveAdx[] = "Remove ADx";
inline constexpr char kRemoveIntx[] = "Remove INTx";
inline constexpr char kRemoveRxdx[] = "Remove RXDx";
inline constexpr char kRemoveMosix[] = "Remove MOSIx";

}  // namespace settingnames

struct SettingInfo {
    std::string name;
    // Absent when the reader computes the default (a path, the model index, a window's
    // design size).
    std::optional<std::string> defaultvalue;
};

// Every name of the store, each once.
const std::vector<SettingInfo>& settingtable();

// The entry of a name in any letter case, or null for a name nobody has claimed.
const SettingInfo* findsetting(std::string_view name);

// Windows that keep their geometry: the number table of the window positions.
const std::vector<int>& positionedwindows();

// The largest place or size of a window in twips: 32767 pixels, beyond any screen, and small
// enough that pixel arithmetic on it cannot overflow.
inline constexpr int32_t kWindowTwipsHigh = 32767 * 15;

// A window's saved place in twips. A negative value gives the default instead, so that no
// window is lost off the screen to the left or top; so does one beyond kWindowTwipsHigh.
struct WindowPlace {
    int32_t left = 0;
    int32_t top = 0;
};
WindowPlace readwindowplace(SettingsAccess& settings, int window);

}  // namespace velmora
