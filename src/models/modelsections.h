#pragma once
// The reader's state while one model file is read, and the handlers of its sections.
// Sections 0, 1 and 3 act line by line while reading; Sections 2, 4 and 5 are kept and
// turned into tables once the whole file is in, as they refer to the named registers.

#include <cstdint>
#include <string>
#include <vector>

#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora::models {

struct NumberedLine {
    int number = 0;  // line of the model file, from 1
    std::string text;
};

// The size keys as declared, and what the data space was actually built with.
struct SizeKeys {
    int flash = 0;
    int extendedio = 0;
    int eeprom = 0;
    int64_t sram = 0;   // declared, compared with sramcells at the end
    int datasram = 0;   // SRAM bytes in the data space
    int dataextendedio = 0;
    int64_t sramcells = 0;
    std::string badkey;  // first key line whose size no chip can have
};

struct ModelReading {
    ModelReading(Machine& machine, ModelDefinitions& defs) : m(machine), definitions(defs) {}

    Machine& m;
    ModelDefinitions& definitions;
    SizeKeys sizes;
    std::vector<std::string> rolelines;  // Section 2, scanned for register roles
    bool skipping = false;               // Section 3: behind a header of a register not described
    std::vector<NumberedLine> interruptlines;
    std::vector<std::string> pinlines;
};

// Section 0.
void readkeyline(ModelReading& reading, const std::string& line);

// Section 1, and the named-register table.
void readregisterline(ModelReading& reading, const std::string& line);
int findregister(const Machine& m, std::string_view name);  // data address, or -1
void addhardwarestackentries(Machine& m);

// Section 3, and the bit-name table.
void readbitdefinitionline(ModelReading& reading, const std::string& line);
void buildbitnames(Machine& m, const std::vector<std::string>& bitdefinitions);

// Section 4.
void buildinterrupts(Machine& m, const std::vector<NumberedLine>& lines, std::vector<std::string>& warnings);

// Section 5.
void buildpins(Machine& m, const std::vector<std::string>& lines);

}  // namespace velmora::models
