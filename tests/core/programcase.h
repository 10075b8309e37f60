#pragma once
// One small program on a machine: data cells set before it runs, the steps it takes, and the
// cells, the PC and the last instruction's cycles afterwards, each worked out by hand. Written
// in a test, or read from a row of a table file (data/instructions.txt describes the columns).

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {

struct Cell {
    int address, value;
};

struct ProgramCase {
    std::string name;
    std::vector<uint16_t> words;
    std::vector<Cell> before;
    int steps;
    std::vector<Cell> after;
    int pc = -1, cycles = -1;  // -1: not checked
};

inline void runprogram(Sim& sim, const ProgramCase& c) {
    SCOPED_TRACE(c.name);
    sim.load(c.words);
    for (const Cell& cell : c.before) sim.m.datamem[cell.address] = static_cast<uint8_t>(cell.value);
    sim.step(c.steps);
    for (const Cell& cell : c.after)
        EXPECT_EQ(sim.m.datamem[cell.address], cell.value) << "cell $" << std::hex << cell.address;
    if (c.pc >= 0) { EXPECT_EQ(sim.m.pc, c.pc); }
    if (c.cycles >= 0) { EXPECT_EQ(instructioncycles(sim.m), static_cast<uint64_t>(c.cycles)); }
}

// Program words written as hexadecimal numbers between blanks.
inline std::vector<uint16_t> hexwords(const std::string& text) {
    std::vector<uint16_t> words;
    std::istringstream in(text);
    for (std::string w; in >> w;) words.push_back(static_cast<uint16_t>(std::stoi(w, nullptr, 16)));
    return words;
}

// "name | program | words | before | steps | after"; cells as rN, sreg, spl, sph or $address,
// with "pc" and "cycles" among those after; every number hexadecimal.
inline ProgramCase programrow(const TableRow& row) {
    ProgramCase c{row.where + ": " + row[0], {}, {}, 0, {}};
    if (row.cells.size() != 6) {
        ADD_FAILURE() << c.name << ": " << row.cells.size() << " cells";
        return c;
    }
    c.words = hexwords(row[2]);
    c.steps = std::stoi(row[4]);
    const auto cells = [&](const std::string& text, std::vector<Cell>& into) {
        std::istringstream in(text);
        for (std::string token; in >> token;) {
            const size_t eq = token.find('=');
            const std::string key = token.substr(0, eq);
            const int value = std::stoi(token.substr(eq + 1), nullptr, 16);
            if (key == "pc") c.pc = value;
            else if (key == "cycles") c.cycles = value;
            else if (key == "sreg") into.push_back({kSregAddress, value});
            else if (key == "spl") into.push_back({kSplAddress, value});
            else if (key == "sph") into.push_back({kSphAddress, value});
            else if (key[0] == 'r') into.push_back({std::stoi(key.substr(1)), value});
            else if (key[0] == '$') into.push_back({std::stoi(key.substr(1), nullptr, 16), value});
            else ADD_FAILURE() << c.name << ": no cell " << key;
        }
    };
    cells(row[3], c.before);
    cells(row[5], c.after);
    return c;
}

}  // namespace velmora::test
