#pragma once
// Model description files (at*.cfg): the list of models and the loader that sizes the
// machine and fills its register, bit-name, interrupt and pin tables.

#include <string>
#include <vector>

#include "core/machine.h"

namespace velmora {

// Options of the settings store that change what a load produces.
struct ModelOptions {
    bool listiofirst = false;     // "List I/O Registers First": reverse the named-register table
    uint8_t unprogrammed = 0xFF;  // fill byte of program memory and EEPROM
};

// What the assembler and compiler take from a model besides the machine tables.
struct ModelDefinitions {
    std::vector<std::string> definitiontext;  // Section 2 lines, then the surviving Section 3 .equ lines
    std::vector<std::string> bitdefinitions;  // surviving Section 3 lines, headers included
};

struct ModelLoadResult {
    bool ok = false;
    // For a failed load: the whole message, ending in "The program will now end.".
    std::string message;
    // Messages that do not stop the load ("Error in interrupt definition N.").
    std::vector<std::string> warnings;
};

// Loads "<directory>/<lower-case name>.cfg" into `m` and `definitions`, binds the register
// roles and marks the side-effect addresses. Leaves `m` cleaned.
ModelLoadResult modelload(const std::string& directory, const std::string& name, const ModelOptions& options,
                          Machine& m, ModelDefinitions& definitions);

struct ModelEntry {
    std::string name;         // display name, "ATmega32"
    std::string filename;     // "atmega32.cfg"
    std::string description;  // lines 3, 4, 6, 7 upper-cased and joined with ", "
};

struct ModelList {
    std::vector<ModelEntry> models;  // in display order
    int defaultindex = -1;           // "ATmega32" if present, else the last
    std::string error;               // set when no model file was found
};

ModelList modellist(const std::string& directory);

// The display name of a model file: "atmega32.cfg" gives "ATmega32", "at90s2313.cfg" "AT90S2313".
std::string modelnameoffile(const std::string& filename);

// Display order: by name, then by the number behind the first six characters.
void sortmodels(std::vector<ModelEntry>& models);

}  // namespace velmora
