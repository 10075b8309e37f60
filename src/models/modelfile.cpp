// modelload: reads one model file section by section and builds the machine's tables.

#include "models/modelfile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>

#include "core/memory.h"
#include "models/modelsections.h"
#include "models/modeltext.h"
#include "models/roles.h"

namespace velmora {

namespace {

namespace fs = std::filesystem;
using namespace models;

constexpr const char* kProgramEnds = "The program will now end.";

// Sections are numbered by their header lines; -1 is the text before the first header.
std::optional<int> sectionheader(const std::string& line) {
    for (int section = 0; section <= 5; ++section)
        if (line == "***** Section " + std::to_string(section) + " *****") return section;
    return std::nullopt;
}

// The file is "<name in lower case>.cfg"; a file that differs only in case is found too.
std::optional<fs::path> findmodelfile(const std::string& directory, const std::string& name) {
    const std::string wanted = lowercase(name) + ".cfg";
    std::error_code error;
    const fs::path exact = fs::path(directory) / wanted;
    if (fs::is_regular_file(exact, error)) return exact;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, error))
        if (lowercase(entry.path().filename().string()) == wanted && entry.is_regular_file(error))
            return entry.path();
    return std::nullopt;
}

// Every model-derived value and table back to "no model".
void resetmodel(Machine& m, const ModelOptions& options, ModelDefinitions& definitions) {
    m.unprogrammed = options.unprogrammed;
    m.modelname.clear();
    m.programbytes = 0;
    m.kinds = PeripheralKinds{};
    m.roles = RegisterRoles{};
    m.namedregisters.clear();
    m.interrupttable.clear();
    m.int0flagaddress = m.int1flagaddress = 0;
    m.int0flagmask = m.int1flagmask = 0;
    m.pincount = 0;
    m.pins.clear();
    m.adcchannels = {};
    resize(m, 0, 0, 0, 0);
    definitions = ModelDefinitions{};
}

void readline(ModelReading& reading, int section, int number, const std::string& line) {
    if (isblankline(line)) return;
    // Section 3 reads its ";" lines as register headers.
    if (section == 3) {
        readbitdefinitionline(reading, line);
        return;
    }
    if (line.starts_with(';')) return;
    switch (section) {
        case 0: readkeyline(reading, line); break;
        case 1: readregisterline(reading, line); break;
        case 2:
            reading.definitions.definitiontext.push_back(line);
            reading.rolelines.push_back(line);
            break;
        case 4: reading.interruptlines.push_back({number, line}); break;
        case 5: reading.pinlines.push_back(line); break;
        default: break;
    }
}

void readsections(std::istream& in, ModelReading& reading) {
    int section = -1;
    int number = 0;
    std::string line;
    while (std::getline(in, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (const auto header = sectionheader(line)) {
            section = *header;
            continue;
        }
        if (section >= 0) readline(reading, section, number, line);
    }
}

std::string corrupted(const std::string& name, const std::string& code) {
    return "File '" + name + ".cfg' corrupted.\nError code: " + code + "\n" + kProgramEnds;
}

}  // namespace

ModelLoadResult modelload(const std::string& directory, const std::string& name, const ModelOptions& options,
                          Machine& m, ModelDefinitions& definitions) {
    ModelLoadResult result;
    const std::optional<fs::path> path = findmodelfile(directory, name);
    std::ifstream in;
    if (path) in.open(*path, std::ios::binary);
    if (!path || !in) {
        result.message = "File '" + name + ".cfg' could not be found.\n" + kProgramEnds;
        return result;
    }

    resetmodel(m, options, definitions);
    m.modelname = name;
    ModelReading reading{m, definitions};
    readsections(in, reading);

    if (options.listiofirst) std::reverse(m.namedregisters.begin(), m.namedregisters.end());
    if (reading.sizes.sramcells != reading.sizes.sram)
        result.message =
            corrupted(name, std::to_string(reading.sizes.sramcells) + "/" + std::to_string(reading.sizes.sram));
    else if (!reading.sizes.badkey.empty())
        result.message = corrupted(name, reading.sizes.badkey);
    if (!result.message.empty()) {
        resetmodel(m, options, definitions);
        return result;
    }

    if (m.sramsize == 0) addhardwarestackentries(m);
    buildbitnames(m, definitions.bitdefinitions);
    buildinterrupts(m, reading.interruptlines, result.warnings);
    bindroles(reading.rolelines, m.roles);
    buildpins(m, reading.pinlines);
    marksideeffects(m);
    clean(m);
    result.ok = true;
    return result;
}

}  // namespace velmora
