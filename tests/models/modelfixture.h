#pragma once
// Hand-made model files for the loader tests, written into a private temporary folder.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>

#include "models/modelfile.h"
#include "support/tempfolder.h"

namespace velmora::test {

// The shared temporary folder, with paths as text as the loader takes them.
struct TempDir : TempFolder {
    std::string path() const { return TempFolder::path().string(); }
    void write(const std::string& filename, const std::string& text) const { writefile(*this / filename, text); }
};

// A small ATmega8-like model (data/atmini8.cfg); register addresses and bits as in avr-libc's
// iom8.h. Tests change single sections and put the file together with text().
struct ModelText {
    std::string lead, keys, registers, definitions, bits, interrupts, pins;

    ModelText() {
        std::string* sections[] = {&lead, &keys, &registers, &definitions, &bits, &interrupts, &pins};
        std::istringstream in(readfile(std::string(VELMORA_TEST_DATA_DIR) + "/atmini8.cfg"));
        int section = 0;
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with("***** Section "))
                section = std::min(section + 1, 6);
            else
                *sections[section] += line + "\n";
        }
    }
    std::string text() const {
        return lead + "***** Section 0 *****\n" + keys + "***** Section 1 *****\n" + registers +
               "***** Section 2 *****\n" + definitions + "***** Section 3 *****\n" + bits +
               "***** Section 4 *****\n" + interrupts + "***** Section 5 *****\n" + pins;
    }
};

// Writes `text` as "<lower-case name>.cfg" and loads it.
struct LoadedModel {
    Machine m;
    ModelDefinitions definitions;
    ModelLoadResult result;
};

inline void loadtext(LoadedModel& model, const TempDir& dir, const std::string& text,
                     const ModelOptions& options = {}, const std::string& name = "ATmini8") {
    std::string filename;
    for (char c : name) filename.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    dir.write(filename + ".cfg", text);
    model.result = modelload(dir.path(), name, options, model.m, model.definitions);
}

// The same in a folder of its own that is gone again afterwards.
inline LoadedModel loadmodel(const std::string& text, const ModelOptions& options = {},
                             const std::string& name = "ATmini8") {
    TempDir dir;
    LoadedModel model;
    loadtext(model, dir, text, options, name);
    return model;
}

}  // namespace velmora::test
