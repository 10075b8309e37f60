#pragma once
// What several harnesses share: a shipped model loaded once, text split into lines as the
// file readers split it, and a private scratch folder.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "assembler/asmassemble.h"
#include "basic/basicmodel.h"
#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora::fuzz {

struct Chip {
    Machine machine;
    ModelDefinitions definitions;
    AsmModel assembler;
    BasicModel basic;
};

// The shipped ATmega32 at 4 MHz, loaded on first use.
const Chip& atmega32();

// Lines at "\n", a "\r" before it dropped.
std::vector<std::string> textlines(const uint8_t* data, size_t size);

// A folder of this process's own, made on first use.
const std::filesystem::path& scratchfolder();

}  // namespace velmora::fuzz
