#pragma once
// One small program on a machine: data cells set before it runs, the steps it takes, and the
// cells, the PC and the last instruction's cycles afterwards, each worked out by hand.

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "support/simfixture.h"

namespace velmora::test {

struct Cell {
    int address, value;
};

struct ProgramCase {
    const char* name;
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

}  // namespace velmora::test
