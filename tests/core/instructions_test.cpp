// Arithmetic, logic, bits, jumps, calls, skips, loads and stores: one row of
// data/instructions.txt each, on the bare machine with SP at the top of SRAM.

#include <gtest/gtest.h>

#include "core/programcase.h"

namespace velmora::test {
namespace {

TEST(Instructions, EveryRowOfTheTable) {
    for (const DataRow& row : datarows("instructions.txt")) {
        const ProgramCase c = programrow(row);
        Sim sim;
        sim.stacktop();
        runprogram(sim, c);
        EXPECT_TRUE(sim.messenger.messages.empty()) << c.name;
    }
}

}  // namespace
}  // namespace velmora::test
