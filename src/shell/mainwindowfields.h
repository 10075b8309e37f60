#pragma once
// What the main window shows: its frames' captions and tips, and the values of every
// display field, computed from the machine. The window draws them; `ekran` is the moment
// it asks for them again.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/machine.h"

namespace velmora {

namespace captions {
inline constexpr char kMicrocontroller[] = "Microcontroller";
inline constexpr char kClockFrequency[] = "Clock Frequency";
inline constexpr char kProgramLocation[] = "Program Location";
inline constexpr char kLastInstruction[] = "Last Instruction";
inline constexpr char kNextInstruction[] = "Next Instruction";
inline constexpr char kInstructions[] = "Instructions:";
inline constexpr char kClockCycles[] = "Clock Cycles:";
inline constexpr char kRealTimeDuration[] = "Real Time Duration";
inline constexpr char kProgramCounter[] = "Program Counter";
inline constexpr char kInternalDataSram[] = "Internal Data SRAM";
inline constexpr char kRegisters[] = "General Purpose Working and I/O Registers";
inline constexpr char kBitHeading[] = "7  6  5  4  3  2  1  0";
inline constexpr char kClickToChange[] = "Click to change!";
inline constexpr char kClickToReload[] = "Click to reload file!";
inline constexpr char kClickToReset[] = "Click to reset simulation statistics";
inline constexpr char kNotAvailable[] = "N/A";
}  // namespace captions

inline constexpr int kSramRows = 32;
inline constexpr int kRegisterRows = 16;
inline constexpr int kPcLamps = 16;

// A bit lamp: lit, dark, or a bit that the register does not have (no write-mask bit).
enum class Lamp : uint8_t { Zero, One, Masked, None };

struct SramRow {
    std::string address;  // "$060", or "N/A" beyond the SRAM
    std::string value;    // two hexadecimal digits, or "N/A"
    int dataaddress = -1; // -1 beyond the SRAM
};

struct RegisterRow {
    std::string text;   // the named-register text, "" for a row beyond the table
    std::string value;  // two digits, or three for a hardware stack level
    std::array<Lamp, 8> lamps{};  // bit 7 first, as the heading reads
    int tableindex = -1;          // index into the named-register table
    bool editable = false;        // hardware stack levels are not
};

// The fields that `ekran` refreshes.
struct RunFields {
    std::string qinst, qinstnext, qbrojinst, qcount, qrealtime, qpc;
    int pclampcount = 0;                // lamps shown: `pcbits`, at most 16
    std::array<bool, kPcLamps> pclamps{};  // bit 0 first
    std::array<SramRow, kSramRows> sram{};
    std::array<RegisterRow, kRegisterRows> registers{};
};

// The scroll positions of the two lists, and their ranges.
struct ListScroll {
    int sram = 0;
    int registers = 0;
};
int sramscrollmax(const Machine& m);
int registerscrollmax(const Machine& m);
ListScroll clampscroll(const Machine& m, ListScroll scroll);

// The text of SRAM cell `address`: "$" and three hexadecimal digits, four from 4096 on.
std::string sramcelltext(int address);
int firstsramaddress(const Machine& m);

RunFields runfields(const Machine& m, ListScroll scroll);
std::vector<SramRow> gprprint(const Machine& m, int scroll);
std::vector<RegisterRow> sfrprint(const Machine& m, int scroll);

// "PC" value: six hexadecimal digits.
std::string pctext(const Machine& m);
// The highest PC of the model as six hexadecimal digits.
std::string highestpctext(const Machine& m);

}  // namespace velmora
