// Every mnemonic: its words for boundary operands, the operands it refuses, its argument
// count, and the operand rewriting. The expected words come from avr-as
// (data/make-encoding-table.py writes data/encodings.txt), not from this assembler.
//
// Two independent references: the corpus of every mnemonic with boundary operands, which
// avra assembled into data/corpus-avra.hex (data/make-avra-corpus.py), and the simulator,
// which runs an assembled program to results worked out by hand.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asmhexfile.h"
#include "assembler/asminstructions.h"
#include "image/hexreader.h"
#include "support/datafile.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

struct Encoding {
    std::string statement;
    std::vector<uint16_t> words;
    int line;
};

// data/encodings.txt: "STATEMENT = WORD [WORD]", as data/make-encoding-table.py wrote it.
const std::vector<Encoding>& encodings() {
    static const std::vector<Encoding> table = [] {
        std::vector<Encoding> rows;
        for (const DataRow& row : datarows("encodings.txt")) {
            const size_t equals = row.text.find(" = ");
            Encoding e{row.text.substr(0, equals), {}, row.line};
            std::istringstream words(row.text.substr(equals + 3));
            for (std::string word; words >> word;) e.words.push_back(static_cast<uint16_t>(std::stoi(word, nullptr, 16)));
            rows.push_back(e);
        }
        return rows;
    }();
    return table;
}

TEST(AsmInstructions, WordsAgreeWithAvrAs) {
    for (const Encoding& e : encodings()) {
        const OneLine one = assembleline(e.statement);
        EXPECT_FALSE(one.line().errorflag) << e.statement << ": " << one.line().errortext;
        EXPECT_EQ(one.words(), e.words) << "encodings.txt line " << e.line << ": " << e.statement;
    }
}

TEST(AsmInstructions, TheTableHoldsAll114MnemonicsAndTheTestsReachEach) {
    std::set<std::string> tested;
    for (const Encoding& e : encodings()) tested.insert(e.statement.substr(0, e.statement.find(' ')));
    std::set<std::string> known;
    for (const AsmInstruction& instruction : asminstructiontable()) known.insert(std::string(instruction.mnemonic));
    EXPECT_EQ(known.size(), 114u);
    EXPECT_EQ(tested, known);
}

// Statements whose operands fail their checks, with the number of failed checks; the line
// shows one message whatever the count.
TEST(AsmInstructions, OutOfRangeOperandsAreRefused) {
    for (const TableRow& row : tablerows("tables.txt", "Refused operands")) {
        const OneLine one = assembleline(row[0]);
        EXPECT_TRUE(one.line().errorflag) << row.where;
        EXPECT_EQ(one.line().errortext, "Invalid argument of the instruction.") << row.where;
        EXPECT_EQ(one.ctx.asmerrors, row.number(1)) << row.where;
        EXPECT_EQ(one.line().opcode, "") << row.where;
    }
}

TEST(AsmInstructions, WrongArgumentCountsAreReportedInPassOne) {
    for (const TableRow& row : tablerows("tables.txt", "Argument counts")) {
        const OneLine one = assembleline(row[0]);
        EXPECT_EQ(one.line().errortext, "Invalid argument.") << row.where;
        EXPECT_EQ(one.ctx.asmerrors, 1) << row.where;
        EXPECT_EQ(one.ctx.asmlocation, 0) << row.where;
    }
}

TEST(AsmInstructions, AliasesPairsPointersAndDisplacementsShareTheirWords) {
    for (const TableRow& row : tablerows("tables.txt", "Same words")) {
        const OneLine one = assembleline(row[0]);
        EXPECT_FALSE(one.line().errorflag) << row.where << ": " << one.line().errortext;
        EXPECT_EQ(one.words(), assembleline(row[1]).words()) << row.where;
    }
}

TEST(AsmInstructions, OpcodeTextsInMemoryOrderAndImmediates) {
    for (const TableRow& row : tablerows("tables.txt", "Opcode texts"))
        EXPECT_EQ(assembleline(row[0]).line().opcode, row[1]) << row.where;
    for (const TableRow& row : tablerows("tables.txt", "Immediates through LDI"))
        EXPECT_EQ(ldivalue(row[0]), row[1] == "invalid" ? -1 : row.number(1)) << row.where;
}

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
