#pragma once
// What the BASIC compiler knows of the selected microcontroller, taken once from the loaded
// model so that a compile never reads the machine.

#include <array>
#include <string>
#include <vector>

namespace velmora {

struct Machine;
struct ModelDefinitions;

struct BasicRegisterName {
    std::string name;  // upper case
    int address = 0;   // data address
};

struct BasicBitName {
    std::string name;   // upper case
    int bit = 0;
    std::string owner;  // register name, upper case
};

struct BasicInterrupt {
    std::string name;
    int vector = 0;  // word address
    std::string description;
    int enableaddress = 0;  // data address, 0 when none
    int enablebit = 0;
};

struct BasicModel {
    std::string name;        // "ATmega32"
    std::string clocktext;   // as the main window shows it
    double clockmhz = 4;
    int datasize = 96;       // RAMEND + 1
    int sramfirst = 96;      // SRAM is one run of addresses
    int sramsize = 0;
    std::vector<BasicRegisterName> registers;  // the model's .EQU register names, in file order
    std::vector<int> sfraddresses;             // addresses of its named special function registers
    std::vector<BasicBitName> bitnames;
    std::vector<BasicInterrupt> interrupts;
    int flashbytes = 0;
    int flashwords = 0;
    int eepromsize = 0;
    int instset = 1;  // 1 full, 2 limited (no X/Y indirect access)
    int adcclass = 0;
    int eeclass = 0;
    int uartclass = 0;
    std::array<bool, 7> ports{};  // A..G exist

    bool hassram() const { return sramsize > 0; }
};

// The register names come from the model's definition lines (".equ NAME = value"); an I/O
// number at or below 0x3F is moved into the data space by 32, a larger value is a data address.
BasicModel basicmodelof(const Machine& m, const ModelDefinitions& definitions, const std::string& clocktext,
                        double clockmhz);

}  // namespace velmora
