// Every mnemonic: its words for boundary operands, the operands it refuses, its argument
// count, and the operand rewriting. The expected words come from avr-as
// (data/make-encoding-table.py writes data/encodings.txt), not from this assembler.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asminstructions.h"
#include "support/datafile.h"
#include "support/sectiontable.h"

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

}  // namespace
}  // namespace velmora::test
