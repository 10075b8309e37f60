// Two independent references: the corpus of every mnemonic with boundary operands, which
// avra assembled into data/corpus-avra.hex (data/make-avra-corpus.py), and the simulator,
// which runs an assembled program to results worked out by hand.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "asmfixture.h"
#include "assembler/asmhexfile.h"
#include "image/hexreader.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

const std::filesystem::path kData(VELMORA_TEST_DATA_DIR);

TEST(AsmCrossCheck, EveryMnemonicGivesTheWordsAvraGives) {
    // Big enough for JMP $3FFFFF's target to need no wrap and for the RJMP limits at $2001.
    AsmModel model = smallmodel();
    model.flashsize = 131072;
    AsmContext ctx = assemble(readfile(kData / "corpus.asm"), model);
    for (size_t i = 0; i < ctx.lines.size(); ++i)
        EXPECT_FALSE(ctx.lines[i].errorflag) << "line " << i + 1 << ": " << ctx.lines[i].text << ": " << ctx.lines[i].errortext;
    const int last = asmbuildimage(ctx);
    ASSERT_GT(last, 0);

    std::vector<uint8_t> avra(ctx.image.size(), 0);
    int highest = 0;
    std::ifstream in(kData / "corpus-avra.hex", std::ios::binary);
    ASSERT_TRUE(readintelhex(in, avra, highest).ok());
    EXPECT_EQ(highest, last + 1);

    int compared = 0;
    for (size_t word = 0; word * 2 + 1 < avra.size(); ++word) {
        const int ours = ctx.image[word * 2] | ctx.image[word * 2 + 1] << 8;
        const int theirs = avra[word * 2] | avra[word * 2 + 1] << 8;
        if (ours != theirs) ADD_FAILURE() << "word " << std::hex << word << ": " << ours << " where avra has " << theirs;
        compared += theirs != 0 ? 1 : 0;
    }
    EXPECT_GT(compared, 300);  // the corpus is not empty
}

TEST(AsmCrossCheck, AnAssembledProgramRunsToTheExpectedRegisters) {
    const AsmContext assembled = [] {
        AsmContext ctx = assemble(readfile(kData / "sumloop.asm"));
        asmbuildimage(ctx);
        return ctx;
    }();
    ASSERT_EQ(assembled.asmerrors, 0);

    Sim sim;
    std::vector<uint16_t> words;
    for (size_t i = 0; i + 1 < assembled.image.size(); i += 2)
        words.push_back(static_cast<uint16_t>(assembled.image[i] | assembled.image[i + 1] << 8));
    sim.load(words);
    sim.stacktop();
    for (int i = 0; i < 1000 && !sim.m.stoprequest; ++i) sim.step();
    ASSERT_TRUE(sim.m.stoprequest);
    EXPECT_EQ(sim.reg(16), 0);
    EXPECT_EQ(sim.reg(17), 110);
    EXPECT_EQ(sim.reg(18), 0xAB);
    EXPECT_EQ(sim.reg(19), 'z');
    EXPECT_EQ(sim.reg(20), 0xAB);
    EXPECT_EQ(sim.reg(26), 0x01);  // X after the post-increment
}

}  // namespace
}  // namespace velmora::test
