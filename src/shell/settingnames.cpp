#include "shell/settingnames.h"

#include <algorithm>

#include "core/machine.h"
#include "shell/settingsfile.h"
#include "shell/settingvalues.h"

namespace velmora {

std::string settingname(std::string_view pattern, std::string_view fill) {
    std::string name(pattern);
    if (const size_t mark = name.find('#'); mark != std::string::npos) name.replace(mark, 1, fill);
    return name;
}

std::string settingname(std::string_view pattern, int number) { return settingname(pattern, std::to_string(number)); }

namespace {

using namespace settingnames;

// Port codes as the wiring settings store them.
const std::string kPortB = std::to_string(kPortCodeA + 1);
const std::string kPortC = std::to_string(kPortCodeA + 2);

// Colours are stored as red + 256 green + 65536 blue.
std::string rgb(int red, int green, int blue) { return settingtext(red + 256 * green + 65536 * blue); }

// Windows with a saved width and height; 11 keeps its width alone.
constexpr int kSizedWindows[] = {9, 16, 17, 21, 23, 29, 39, 42};
constexpr int kWidthOnlyWindow = 11;
constexpr int kMainWindow = 1;
constexpr int kOnTopWindows[] = {4, 6, 7, 11, 20, 21, 23, 29, 30, 31, 32, 36, 37, 38, 39, 42, 45, 46};

// The main window starts further up and left than the others.
int32_t defaultleft(int window) { return window == kMainWindow ? 3000 : 4000; }
int32_t defaulttop(int window) { return window == kMainWindow ? 2000 : 3000; }

class TableBuilder {
public:
    std::vector<SettingInfo> rows;

    void add(std::string name, std::string defaultvalue) { rows.push_back({std::move(name), std::move(defaultvalue)}); }
    void computed(std::string name) { rows.push_back({std::move(name), std::nullopt}); }
    void all(std::initializer_list<const char*> names, const std::string& defaultvalue) {
        for (const char* name : names) add(name, defaultvalue);
    }
};

void mainwindow(TableBuilder& t) {
    t.computed(kLastPath);
    t.add(kSavePositions, "ON");
    t.add(kClockFrequency, "4");
    t.add(kEepromWriteTime, "3400");
    t.add(kAdConversionTime, "25");
    t.add(kUartTime, "1000");
    t.add(kSimulationRate, "4");
    t.add(kUltimateTimer, "500");
    t.add(kUnprogrammedBitValue, "1");
    t.add(kCompactView, "ON");
    t.add(kInfiniteLoopStop, "OFF");
    t.add(kBasicProgramTracking, "ON");
    t.add(kShowConfirmations, "OFF");
    t.add(kShowMemoryUsage, "ON");
    t.add(kPreserveInputStates, "OFF");
    t.add(kUseVoltageForAnalogInputs, "OFF");
    t.add(kAnalogSliderMode, "1");
    t.add(kListIoFirst, "0");
    t.add(kSaveAlwaysOnTop, "1");
    t.computed(kMicrocontrollerModel);
    for (int slot = 1; slot <= 5; ++slot) t.add(settingname(kExternalModule, slot), "OFF");
    for (int age : {0, -1, -2}) t.add(settingname(kSimulationDuration, age), "0");
    t.all({kAlternativeSfrModel, kAlternativeSfrList1, kAlternativeSfrList2}, "");
    t.add(kMessageDuration, "4");
    t.add(kColorTheme, "Original Lite");
    t.add(kColorThemeBorder, "1");
    t.add(kGdbPort, "1234");
}

void windows(TableBuilder& t) {
    for (int window : positionedwindows()) {
        t.add(settingname(kWindowLeft, window), settingtext(defaultleft(window)));
        t.add(settingname(kWindowTop, window), settingtext(defaulttop(window)));
        const bool sized = std::ranges::find(kSizedWindows, window) != std::end(kSizedWindows);
        if (sized || window == kWidthOnlyWindow) t.computed(settingname(kWindowWidth, window));
        if (sized) t.computed(settingname(kWindowHeight, window));
    }
    t.add(kAssemblerDivider, "70");
    for (int window : kOnTopWindows) t.add(settingname(kOnTop, window), "0");
}

void autostart(TableBuilder& t) {
    t.all({kAutoStartProgram, kAutoStartEeprom, kAutoStartStack, kAutoStartView, kAutoStartAlternative,
           kAutoStartBreak, kAutoStartSpecial, kAutoStartAssembler, kAutoStartCompiler, kAutoStartLed,
           kAutoStartKeypad, kAutoStartLcd, kAutoStartGlcd, kAutoStartStep, kAutoStartI2c, kAutoStartUart,
           kAutoStartTerminal, kAutoStartSoft, kAutoStartOscope, kAutoStartSiggen, kAutoStartSegment,
           kAutoStartWatch},
          "0");
    t.all({kAutoStartHex, kAutoStartBas, kAutoStartAsm, kAutoStartRemember}, "1");
    t.all({kAutoStartHexFile, kAutoStartBasFile, kAutoStartAsmFile}, "");
}

void tools(TableBuilder& t) {
    t.computed(kAvrAssemblerPath);  // the path of a tool on this computer
    t.computed(kMpasmwinListing);
    t.add(kListingWithoutOpcodes, "OFF");
    t.add(kPrinterFontName, "Lucida Console");
    t.add(kPrinterFontSize, "9");
    t.add(kHoldPcInFocus, "1");
    t.add(kAllowArbitraryBitNames, "0");
}

void editors(TableBuilder& t) {
    struct EditorDefaults {
        const char* prefix;
        int tabsize, wheelstep, undolevels;
        std::string commentcolor;
    };
    const EditorDefaults editors[] = {{kBasicEditor, 3, 5, 20, rgb(0, 150, 0)},
                                      {kAssemblerEditor, 8, 10, 10, rgb(0, 64, 64)}};
    for (const EditorDefaults& e : editors) {
        auto add = [&](const char* pattern, const std::string& value) { t.add(settingname(pattern, e.prefix), value); };
        add(kEditorFontName, "Courier New");
        add(kEditorFontSize, "10");
        add(kEditorColoringEnabled, "-1");
        add(kEditorBackgroundColor, rgb(255, 255, 255));
        add(kEditorTextColor, rgb(0, 0, 0));
        add(kEditorKeywordColor, rgb(0, 0, 150));
        add(kEditorCommentColor, e.commentcolor);
        add(kEditorErrorColor, rgb(255, 0, 0));
        add(kEditorLineNumbersBackgroundColor, rgb(255, 255, 220));
        add(kEditorLineNumbersTextColor, rgb(80, 100, 0));
        add(kEditorLineNumbersEnabled, "-1");
        add(kEditorTabSize, settingtext(e.tabsize));
        add(kEditorScrollWheelStep, settingtext(e.wheelstep));
        add(kEditorUndoLevelsNumber, settingtext(e.undolevels));
    }
    auto basic = [&](const char* pattern, const std::string& value) { t.add(settingname(pattern, kBasicEditor), value); };
    basic(kEditorStringColor, rgb(150, 0, 0));
    basic(kEditorAsmColor, rgb(0, 150, 150));
    basic(kEditorAutoFormatTextEnabled, "-1");
    basic(kEditorAutoCaseControlEnabled, "-1");
    basic(kEditorCommentSpace, "2");
    basic(kEditorProcedureSeparatorWidth, "50");
}

void displays(TableBuilder& t) {
    t.add(kLcdColorScheme, "0");
    t.add(kLcdLines, "2");
    t.add(kLcdCharacters, "16");
    t.add(kLcdDataLinesPort, kPortB);
    t.add(kLcdDataLinesInterface, "4");
    t.add(kLcdRsLinePort, kPortB);
    t.add(kLcdRsLineBit, "3");
    t.add(kLcdELinePort, kPortB);
    t.add(kLcdELineBit, "2");
    t.add(kLcdRwLinePort, "0");
    t.add(kLcdRwLineBit, "0");
    t.add(kLcdBusyDelayInit, "1640");
    t.add(kLcdBusyDelayCmd, "42");
    t.add(kLcdBusyDelayData, "46");

    t.add(kGlcdColorScheme, "0");
    t.add(kGlcdDataLinesPort, kPortB);
    int bit = 0;
    for (const char* line : {"CS1", "CS2", "RS", "E", "R/W"}) {
        t.add(settingname(kGlcdLinePort, line), kPortC);
        t.add(settingname(kGlcdLineBit, line), settingtext(bit++));
    }
    t.add(kGlcdBusyDelayInit, "100");
    t.add(kGlcdBusyDelayCmd, "10");
    t.add(kGlcdBusyDelayData, "10");
    t.add(kGlcdDisplayMode, "1");
    t.add(kGlcdContinuousUpdate, "1");

    for (int led = 0; led < 8; ++led) {
        t.add(settingname(kLedPort, led), kPortB);
        t.add(settingname(kLedBit, led), settingtext(led));
        t.add(settingname(kLedColor, led), "1");
    }

    for (int digit = 1; digit <= 4; ++digit) {
        t.add(settingname(kSevenSegmentPort, digit), "0");
        t.add(settingname(kSevenSegmentPin, digit), "0");
        t.add(settingname(kSevenSegmentInv, digit), "0");
        t.add(settingname(kSevenSegmentAbcInv, digit), "0");
        for (int segment = 0; segment < 8; ++segment) {
            const std::string segmentname = settingtext(digit) + static_cast<char>('a' + segment);
            t.add(settingname(kSevenSegmentPort, segmentname), kPortB);
            t.add(settingname(kSevenSegmentPin, segmentname), settingtext(segment));
        }
    }
    t.add(kSevenSegmentLedColor, rgb(192, 192, 255));
}

void devices(TableBuilder& t) {
    for (int line = 0; line < 4; ++line) {
        t.add(settingname(kKeypadColumnPort, line), kPortB);
        t.add(settingname(kKeypadColumnBit, line), settingtext(line));
        t.add(settingname(kKeypadRowPort, line), kPortB);
        t.add(settingname(kKeypadRowBit, line), settingtext(line + 4));
    }

    for (int coil = 0; coil < 4; ++coil) {
        const std::string letter(1, static_cast<char>('A' + coil));
        t.add(settingname(kStepperCoilPort, letter), kPortB);
        t.add(settingname(kStepperCoilBit, letter), settingtext(coil));
    }
    t.add(kStepperHalfStep, "1");

    t.add(kI2cSdaLinePort, kPortB);
    t.add(kI2cSdaLinePin, "2");
    t.add(kI2cSclLinePort, kPortB);
    t.add(kI2cSclLinePin, "1");
    t.add(kI2cEepromType, "24C256");

    t.add(kTerminalHex, "0");
    t.add(kTerminalCommPort, "2");
    t.add(kTerminalBaudRate, "9600");
    t.add(kUartCharsDelayTime, "10");
    t.add(kHardwareUartHex, "0");
    t.add(kSoftwareUartRxLinePort, kPortB);
    t.add(kSoftwareUartRxLinePin, "2");
    t.add(kSoftwareUartTxLinePort, kPortB);
    t.add(kSoftwareUartTxLinePin, "1");
    t.add(kSoftwareUartBaudRate, "9600");
    t.add(kSoftwareUartInvertedLevels, "0");
    t.add(kSoftwareUartHex, "0");

    t.add(kOscilloscopeMode, "0");
    t.add(kOscilloscopeRefresh, "1");
    t.add(kOscilloscopeNumberOfPoints, "1000");
    t.add(kOscilloscopeOutputColor, rgb(128, 128, 255));
    t.add(kOscilloscopeInputColor, rgb(255, 128, 255));
    for (int channel = 1; channel <= 4; ++channel)
        for (const char* pattern : {kOscilloscopeChannelPort, kOscilloscopeChannelPin, kOscilloscopeChannelPullUp})
            t.add(settingname(pattern, channel), "0");

    for (int generator = 1; generator <= 4; ++generator)
        for (const char* pattern :
             {kSignalGeneratorPort, kSignalGeneratorPin, kSignalGeneratorPeriod, kSignalGeneratorDutyCycle})
            t.add(settingname(pattern, generator), "0");

    t.add(kWatchHexValues, "OFF");
    t.add(kWatchConfirmDelete, "ON");
    t.all({kRemovePcintx, kRemoveAdcx, kRemoveAinx, kRemoveAdx, kRemoveIntx, kRemoveRxdx, kRemoveMosix}, "0");
}

std::vector<SettingInfo> buildtable() {
    TableBuilder t;
    mainwindow(t);
    windows(t);
    autostart(t);
    tools(t);
    editors(t);
    displays(t);
    devices(t);
    return std::move(t.rows);
}

}  // namespace

const std::vector<int>& positionedwindows() {
    static const std::vector<int> windows = {1,  4,  6,  7,  9,  11, 12, 13, 14, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 26,
                                             27, 28, 29, 30, 31, 32, 35, 36, 37, 38, 39, 42, 43, 45, 46, 50, 51, 52, 53};
    return windows;
}

const std::vector<SettingInfo>& settingtable() {
    static const std::vector<SettingInfo> table = buildtable();
    return table;
}

const SettingInfo* findsetting(std::string_view name) {
    const auto& table = settingtable();
    auto it = std::ranges::find_if(table, [&](const SettingInfo& s) { return samesettingname(s.name, name); });
    return it == table.end() ? nullptr : &*it;
}

WindowPlace readwindowplace(SettingsAccess& settings, int window) {
    auto coordinate = [&](const char* pattern, int32_t fallback) {
        return readnumber(settings, settingname(pattern, window), fallback, {0, kWindowTwipsHigh});
    };
    return {coordinate(kWindowLeft, defaultleft(window)), coordinate(kWindowTop, defaulttop(window))};
}

}  // namespace velmora
