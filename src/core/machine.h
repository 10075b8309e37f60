#pragma once
// The one simulated microcontroller: memories, registers, counters and the
// register roles that the model loader binds. Plain data; the procedures that
// act on it live beside it (memory.h, stack.h, interpreter.h, runcontrol.h).

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/observers.h"
#include "core/portstate.h"

namespace velmora {

// Fixed addresses the core uses on every model.
inline constexpr int kRegisterFileSize = 32;  // R0..R31 at data addresses 0..31
inline constexpr int kSregAddress = 0x3F + 32;
inline constexpr int kSphAddress = 0x3E + 32;
inline constexpr int kSplAddress = 0x3D + 32;
inline constexpr int kXL = 26, kXH = 27, kYL = 28, kYH = 29, kZL = 30, kZH = 31;

// SREG bit masks.
inline constexpr uint8_t kFlagC = 1, kFlagZ = 2, kFlagN = 4, kFlagV = 8, kFlagS = 16, kFlagH = 32,
                         kFlagT = 64, kFlagI = 128;

// Ports A..G carry the codes 5..11 in every interface; 0 means "not connected".
inline constexpr int kPortCodeA = 5;
inline constexpr int kPortCount = 7;

// Pseudo-addresses of the hardware stack levels in the named-register table.
inline constexpr int kHwStackPseudoAddress = 10000;
inline constexpr int kHwStackFaulted = 1000;

struct NamedRegister {
    std::string text;  // "$05F   SREG"
    std::string name;
    int address = 0;   // data address, or 10000.. for hardware stack levels
    uint8_t reset = 0;
};

struct InterruptEntry {
    std::string name;
    int vector = 0;  // word address
    std::string description;
    int enableaddress = 0;
    uint8_t enablemask = 1;
    int flagaddress = 0;
    uint8_t flagmask = 1;
    int polarity = 1;
};

// Addresses bound by name from the model's definitions; 0 means the model has no such register.
struct RegisterRoles {
    int sreg = 0, sph = 0, spl = 0;  // bound for completeness; the core uses the fixed addresses
    std::array<int, kPortCount> port{};
    std::array<int, kPortCount> pin{};
    std::array<int, kPortCount> ddr{};
    std::array<bool, kPortCount> portexists{};
    int eecr = 0, eedr = 0, eearl = 0, eearh = 0;
    int udr = 0, ucsra = 0, ucsrb = 0, ucsrc = 0, ubrrl = 0, ubrrh = 0;
    int admux = 0, adcsra = 0, adch = 0, adcl = 0, adcsrb = 0;
    int acsr = 0, acsrb = 0;
    int sfior = 0, mcucr = 0, eicra = 0;
};

// Peripheral kinds from the model's key lines; a kind below 2 means "none".
struct PeripheralKinds {
    int simconf = 0;
    int instsetconf = 0;
    int int0 = 0, int1 = 0;
    std::vector<int> compconf;  // kind, bandgap, plus, minus [, third]
    int adcconf = 0;
    int eeconf = 0;
    int uartconf = 0;
};

// One package pin from the model; the Microcontroller View derives its display name from it.
struct PackagePin {
    std::string caption;      // as written in the model
    bool secondhalf = false;  // right half of the package: pin number above half the pin lines
    int portcode = 0;         // 5..11 for ports A..G, 0 for none
    int bit = -1;             // bit in the port, -1 for none
    int adcchannel = -1;      // 0..15, -1 for none
    int type = 0;             // 0 no control, 1 digital, 2 digital that can also be analog
};

inline constexpr int kMaxPackagePins = 80;
inline constexpr int kAdcChannelCount = 16;

// An ADC channel exists when a package pin names it.
struct AdcChannel {
    bool exists = false;
    int portcode = 0;
    uint8_t bitmask = 0;
    int pinindex = -1;  // index into Machine::pins
};

// Per-address side-effect marks, so the common load/store is a plain array access.
enum SideEffect : uint8_t {
    kEffectNone = 0,
    kEffectRead = 1,
    kEffectWrite = 2,
    kEffectWake = 4,       // a peripheral phase reads it: a write wakes the phases
    kEffectClearFlag = 8,  // an interrupt flag that a written 1 clears
    kEffectInterrupt = 16, // an interrupt's enable or flag register: a write may make one pending
    kEffectWatchRead = 32,  // a debugger watches reads of it
    kEffectWatchWrite = 64, // a debugger watches writes to it
};
// What sends a read or a write down the slow path.
inline constexpr uint8_t kEffectReadPath = kEffectRead | kEffectWatchRead;
inline constexpr uint8_t kEffectWritePath = kEffectWrite | kEffectWatchWrite;

// Bytes sent by the USART that no front end has taken yet; when full, the oldest give way.
inline constexpr int kUsartOutputCapacity = 256;

// Byte-level USART state; -1 marks an empty place.
struct UsartState {
    int txbuffer = -1;
    int txshift = -1;
    float txtimeleft = 0;
    // Sent bytes as a fixed ring, so sending never allocates; usarttakeoutput() empties it.
    std::array<uint8_t, kUsartOutputCapacity> txoutput{};
    uint16_t txoutputstart = 0, txoutputcount = 0;
    int rxshift = -1;
    float rxtime = 0;
    int rxfifo1 = -1, rxfifo2 = -1;
    int ubrrhshadow = 0;
    uint64_t lastucsrcread = 0;  // cycle of the last shadow read, 0 when none
};

struct Machine {
    // --- sizes (set by the model loader, see resize()) ---
    int flashsize = 0;       // bytes
    int flashwords = 0;
    int pcbits = 0;
    bool threebytepc = false;
    int extendedio = 0;
    int sramsize = 0;
    int dataspacesize = 96;
    bool eightbitpointers = true;
    int eepromsize = 0;
    uint8_t unprogrammed = 0xFF;

    // --- memories: one byte per element ---
    std::vector<uint8_t> progmem;   // flashsize + 4
    std::vector<uint8_t> datamem;   // dataspacesize
    std::vector<uint8_t> datamask;  // dataspacesize
    std::vector<uint8_t> eeprommem; // eepromsize
    std::vector<uint8_t> sideeffects; // dataspacesize, SideEffect bits

    // Highest program byte address written by a load, plus one; 0 when nothing is loaded.
    int programbytes = 0;

    // --- model tables ---
    std::string modelname;
    PeripheralKinds kinds;
    RegisterRoles roles;
    std::vector<NamedRegister> namedregisters;
    std::vector<std::array<std::string, 9>> bitnames;  // per data address
    std::vector<InterruptEntry> interrupttable;
    int int0flagaddress = 0, int1flagaddress = 0;
    uint8_t int0flagmask = 0, int1flagmask = 0;
    int pincount = 0;  // the model's "pins: " key
    std::vector<PackagePin> pins;
    std::array<AdcChannel, kAdcChannelCount> adcchannels{};

    // --- processor state ---
    int32_t pc = 0;  // words
    uint64_t totalinstructions = 0;
    uint64_t totalcycles = 0;
    // The resettable statistics count from these marks, and the step's own cycles from its
    // start, so that a step adds to one instruction and one cycle counter only.
    uint64_t instructionmark = 0;
    uint64_t cyclemark = 0;
    uint64_t stepstartcycles = 0;
    std::array<int32_t, 3> hwstack{};
    int hwstackdepth = 0;
    uint32_t watchdogcounter = 0;

    // What the last step did, kept instead of building text on the hot path.
    enum class LastStep : uint8_t { None, Instruction, Interrupt, Unrecognized };
    LastStep laststep = LastStep::None;
    int32_t lastpc = 0;  // where the last instruction was; its words are read again for its text

    // Why stoprequest was last raised, for front ends that report it.
    enum class StopReason : uint8_t { None, Sleep, Unrecognized, EndOfMemory, InfiniteLoop, User };
    StopReason stopreason = StopReason::None;

    bool afterreti = false;
    bool breakexecuted = false;  // BREAK ran in this step, or a watched address was reached
    // The watched address the last step read or wrote, -1 for none; a debugger clears it.
    int watchhit = -1;
    bool watchhitwrite = false;
    // Something beyond the instruction's own registers happened (a peripheral woke, BREAK, a
    // fault): a run of quiet steps ends after this one.
    bool endquiet = false;
    // The peripheral phases run while this counts above zero or a peripheral is busy: idle
    // peripherals reach a state that repeats, and only a change they can see (wakeperipherals)
    // can move them from it.
    int peripheralwake = 3;
    bool peripheralsalwaysawake = false;  // the model puts a peripheral register among R0..R31
    bool interruptsuntracked = false;     // an interrupt's enable or flag is among R0..R31
    // The outside world (a terminal, scheduled inputs) wants its turn after this step, or once
    // totalcycles reaches attentioncycle.
    bool attention = false;
    uint64_t attentioncycle = UINT64_MAX;
    bool stoprequest = false;
    bool simulationrunning = false;
    float clockfrequency = 4.0f;

    // --- peripheral state ---
    UsartState usart;
    std::array<PortState, kPortCount> ports{};  // by port code minus kPortCodeA
    std::array<AnalogState, kAdcChannelCount> analog{};
    PinWatch pinwatch;
    ExternalInterruptState extinterrupts;
    AdcState adc;
    EepromState eeprom;
    ComparatorState comparator;

    // --- options the core consults ---
    bool infiniteloopstop = false;
    bool preserveinputstates = false;
    float adconversiontime = 25.0f;  // "A/D Conversion Time" in microseconds
    float eepromwritetime = 3400.0f;  // "EEPROM Write Time" in microseconds
    float uarttime = 1000.0f;  // "UART Transmit/Receive Time": microseconds per USART byte

    // Program words at which a run drops to Step By Step once the program counter reaches
    // them: one flag per word, kept by setbreakpoints(); `breakpointsset` when any is set, so
    // that a run without them tests nothing.
    std::vector<uint8_t> breakat;
    bool breakpointsset = false;

    // Receives the stack fault messages and the drop to Step By Step.
    MachineEvents* events = nullptr;

    // Runs the per-start resets of the later subsystems (devices, peripherals).
    std::vector<void (*)(Machine&)> cleanhooks;
    // Devices and traces that follow the pins (core/observers.h); reset by clean.
    std::vector<PinObserver*> observers;
};

// The statistics of the main window, which Reset Statistics and the user may set.
inline uint64_t instructioncounter(const Machine& m) { return m.totalinstructions - m.instructionmark; }
inline uint64_t clockcyclecounter(const Machine& m) { return m.totalcycles - m.cyclemark; }
inline void setinstructioncounter(Machine& m, uint64_t value) { m.instructionmark = m.totalinstructions - value; }
inline void setclockcyclecounter(Machine& m, uint64_t value) { m.cyclemark = m.totalcycles - value; }
// Cycles of the step under way or just ended, stalls of peripherals included.
inline uint32_t instructioncycles(const Machine& m) { return static_cast<uint32_t>(m.totalcycles - m.stepstartcycles); }

// Steps for which the phases still run after the last change a peripheral could see: one for
// the change itself, one for what it caused (a new pin level, an edge), one to spare.
inline constexpr int kPeripheralWakeSteps = 3;
inline void wakeperipherals(Machine& m) {
    m.peripheralwake = kPeripheralWakeSteps;
    m.endquiet = true;
}

// Resizes every memory for the given model sizes and fills program memory and EEPROM
// with the unprogrammed value.
void resize(Machine& m, int flashsize, int extendedio, int sramsize, int eepromsize);

// Program memory word at a word address (little-endian bytes).
inline uint16_t progword(const Machine& m, int wordaddress) {
    const uint8_t* bytes = m.progmem.data() + static_cast<size_t>(wordaddress) * 2;
    return static_cast<uint16_t>(bytes[0] | (bytes[1] << 8));
}

// Who set a breakpoint word: the user's list and a debugger client keep theirs apart, so
// neither clears the other's. A word stops a run when anyone set it.
inline constexpr uint8_t kBreakUser = 1, kBreakDebugger = 2;
// Sets one owner's breakpoint words (word addresses; those outside program memory are left out).
void setbreakpoints(Machine& m, const std::vector<int32_t>& words, uint8_t owner = kBreakUser);
inline bool atbreakpoint(const Machine& m) { return m.breakpointsset && m.breakat[static_cast<size_t>(m.pc)]; }

// The reset of the machine: counters, data space, reset values, peripheral state.
void clean(Machine& m);

// The machine's "instructiontext" of the last step, rendered on demand.
std::string instructiontext(const Machine& m);
// Text of the instruction at pc ("nextinstructiontext").
std::string nextinstructiontext(const Machine& m);

// Default bit-name column for an address: digits for bits, "$" + address for the name.
std::array<std::string, 9> defaultbitnames(int address);

}  // namespace velmora
