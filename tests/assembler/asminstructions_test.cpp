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

TEST(AsmInstructions, TwoWordInstructionsTakeTwoWordsOfRoom) {
    const AsmContext ctx = assemble(" LDS R0,0\n STS 0,R0\n JMP 0\n CALL 0\n NOP\n");
    const int32_t expected[] = {0, 2, 4, 6, 8};
    for (size_t i = 0; i < 5; ++i) EXPECT_EQ(ctx.lines[i].location, expected[i]) << i;
}

// Statements whose operands fail their checks, with the number of failed checks; the line
// shows one message whatever the count.
struct Refusal {
    const char* statement;
    int errors;
};

TEST(AsmInstructions, OutOfRangeOperandsAreRefused) {
    const Refusal cases[] = {
        // reg: 0..31
        {"ADD R0,32", 1}, {"ADD -1,R0", 1}, {"MOV 32,32", 2}, {"INC 32", 1}, {"PUSH -1", 1}, {"CLR 32", 1},
        // reghigh: 16..31
        {"LDI R15,1", 1}, {"SER R15", 1}, {"SER 32", 1}, {"CPI 32,0", 1}, {"MULS R15,R16", 1}, {"MULS R16,R32", 1},
        // regmul: 16..23
        {"MULSU R24,R16", 1}, {"FMUL R15,R16", 1}, {"FMULS R16,R24", 1}, {"FMULSU R24,R15", 2},
        // byte: 0..255
        {"LDI R16,256", 1}, {"LDI R16,-1", 1}, {"ANDI R16,$100", 1}, {"CBR R16,256", 1}, {"SUBI R15,256", 2},
        // bit: 0..7
        {"BLD R0,8", 1}, {"SBRS 32,8", 2}, {"BSET 8", 1}, {"BCLR -1", 1}, {"SBI 31,8", 1}, {"BRBS 8,0", 1},
        // reg as I/O address of CBI/SBI/SBIC/SBIS
        {"CBI 32,0", 1}, {"SBIS 32,8", 2},
        // six: 0..63
        {"IN R0,64", 1}, {"OUT 64,R0", 1}, {"ADIW R24,64", 1}, {"SBIW R24,-1", 1}, {"LDD R0,Y+64", 1},
        {"STD Z+64,R0", 1},
        // pair4 and pair16
        {"ADIW 4,1", 1}, {"SBIW R22,1", 1}, {"MOVW 16,R0", 1}, {"MOVW R0,-1", 1},
        // word and addr22
        {"LDS R0,65536", 1}, {"STS -1,R0", 1}, {"LDS 32,65536", 2}, {"JMP $400000", 1}, {"CALL -1", 1},
        // rel12 and rel7, for offsets written as numbers
        {"RJMP 2048", 1}, {"RCALL -2049", 1}, {"BRNE 64", 1}, {"BREQ -65", 1}, {"BRBC 0,64", 1},
        {"BRBS 8,-65", 2},
        // operands that cannot be read at all
        {"ADD R1,R2,R3", 1}, {"LDI R16,UNKNOWN", 1}, {"LDD R1,Y", 1}, {"LDD R1,X+1", 1}, {"LDI R16,0b2", 1},
    };
    for (const Refusal& r : cases) {
        const OneLine one = assembleline(r.statement);
        EXPECT_TRUE(one.line().errorflag) << r.statement;
        EXPECT_EQ(one.line().errortext, "Invalid argument of the instruction.") << r.statement;
        EXPECT_EQ(one.ctx.asmerrors, r.errors) << r.statement;
        EXPECT_EQ(one.line().opcode, "") << r.statement;
    }
}

TEST(AsmInstructions, AnUnreadableOperandEndsTheLineBeforeTheSecondIsRead) {
    // The first operand fails evaluation: one error, the second is never looked at.
    const OneLine one = assembleline("LDI NOWHERE,NEITHER");
    EXPECT_EQ(one.ctx.asmerrors, 1);
}

TEST(AsmInstructions, ARefusedLineKeepsItsRoom) {
    const AsmContext ctx = assemble(" LDS R0,65536\n NOP\n");
    EXPECT_EQ(ctx.lines[1].location, 2);
}

TEST(AsmInstructions, WrongArgumentCountsAreReportedInPassOne) {
    for (const char* statement : {"NOP 1", "RET R0", "ADD R1", "INC", "INC R1,R2", "LDI R16", "LPM R0", "ELPM Z",
                                  "JMP", "RJMP 1,2", "LD R0", "BRBS 1", "MOVW R0"}) {
        const OneLine one = assembleline(statement);
        EXPECT_EQ(one.line().errortext, "Invalid argument.") << statement;
        EXPECT_EQ(one.ctx.asmerrors, 1) << statement;
        EXPECT_EQ(one.ctx.asmlocation, 0) << statement;
    }
}

TEST(AsmInstructions, AliasesShareTheirWords) {
    const std::pair<const char*, const char*> same[] = {
        {"CBR R16,1", "ANDI R16,254"}, {"SBR R20,$0F", "ORI R20,$0F"},  {"LSL R7", "ADD R7,R7"},
        {"ROL R31", "ADC R31,R31"},    {"TST R16", "AND R16,R16"},      {"CLR R1", "EOR R1,R1"},
        {"SER R18", "LDI R18,255"},    {"CLC", "BCLR 0"},               {"SEI", "BSET 7"},
        {"BRLO 3", "BRCS 3"},          {"BRSH -3", "BRCC -3"},          {"BREQ 5", "BRBS 1,5"},
        {"LDD R1,Y+0", "LD R1,Y"},     {"STD Z+0,R9", "ST Z,R9"},       {"CALL 100", "CALL $64"},
    };
    for (const auto& [a, b] : same) EXPECT_EQ(assembleline(a).words(), assembleline(b).words()) << a << " / " << b;
}

TEST(AsmOperandPrep, PairsPointersAndDisplacements) {
    const std::pair<const char*, const char*> same[] = {
        // ADIW and SBIW name the pair by any of its spellings, or by its number
        {"ADIW R27:R26,5", "ADIW R26,5"}, {"ADIW XH:XL,5", "ADIW R26,5"}, {"ADIW XL,5", "ADIW R26,5"},
        {"ADIW 1,5", "ADIW R26,5"},       {"SBIW zh:zl,1", "SBIW R30,1"}, {"SBIW r29 : r28,1", "SBIW R28,1"},
        {"ADIW R25:R24,1", "ADIW R24,1"},
        // MOVW: pairs, even registers and the pointer low halves
        {"MOVW R25:R24,R31:R30", "MOVW R24,R30"}, {"MOVW XL,YL", "MOVW R26,R28"}, {"MOVW ZL,R1:R0", "MOVW R30,R0"},
        // LD, ST, LPM, ELPM: a number is taken as the pointer code
        {"LD R1,8", "LD R1,Z+"}, {"ST 3,R2", "ST -X,R2"}, {"LPM R5,7", "LPM R5,Z"}, {"ld r1, z+", "LD R1,Z+"},
        {"LD R1,- Y", "LD R1,-Y"},
        // LDD and STD: the text behind "Y+" or "Z+" is the displacement
        {"LDD R1,Y+ 2*3", "LDD R1,Y+6"}, {"STD z+$10,R4", "STD Z+16,R4"},
    };
    for (const auto& [a, b] : same) {
        const OneLine one = assembleline(a);
        EXPECT_FALSE(one.line().errorflag) << a << ": " << one.line().errortext;
        EXPECT_EQ(one.words(), assembleline(b).words()) << a << " / " << b;
    }
    // R25:R24 and R31:R30 as MOVW pairs 12 and 15.
    EXPECT_EQ(assembleline("MOVW R25:R24,R31:R30").words(), std::vector<uint16_t>{0x01CF});
    // An odd register has no rule: its symbol value 3 is taken as the pair number.
    EXPECT_EQ(assembleline("MOVW R3,R1").words(), std::vector<uint16_t>{0x0131});
}

TEST(AsmOperandPrep, PointerFormsThatNameNothingGenerateNothingAndSayNothing) {
    for (const char* statement : {"LD R1,0", "LD R1,10", "ST 12,R1", "LPM R1,X", "ELPM R1,-Z", "LPM R1,Y+",
                                  "LDD R1,5", "STD 5,R1"}) {
        const AsmContext ctx = assemble(" " + std::string(statement) + "\n NOP\n");
        EXPECT_FALSE(ctx.lines[0].errorflag) << statement << ": " << ctx.lines[0].errortext;
        EXPECT_EQ(ctx.lines[0].opcode, "") << statement;
        EXPECT_EQ(ctx.lines[1].location, 1) << statement << ": the room stays reserved";
    }
}

TEST(AsmBranches, LabelTargetsBecomeOffsetsFromTheNextWord) {
    const AsmContext ctx = assemble(
        "BACK: NOP\n"           // 0
        "      BRNE BACK\n"     // 1: -2
        "      RJMP AHEAD\n"    // 2: +1
        "      RCALL back\n"    // 3: -4
        "AHEAD: BRBS 1,BACK\n"  // 4: -5
        "      RJMP AHEAD\n");  // 5: -2
    EXPECT_EQ(ctx.asmerrors, 0);
    const uint16_t expected[] = {0x0000, 0xF7F1, 0xC001, 0xDFFC, 0xF3D9, 0xCFFE};
    for (size_t i = 0; i < 6; ++i) EXPECT_EQ(opcodewords(ctx.lines[i].opcode).at(0), expected[i]) << i;
}

// A target's words, or the refusal of a target out of reach; offsets worked out by hand.
TEST(AsmBranches, TargetsTheirRangeAndTheWrapOfProgramMemory) {
    const std::string nops63 = [] {
        std::string text;
        for (int i = 0; i < 63; ++i) text += " NOP\n";
        return text;
    }();
    const struct {
        const char* why;
        std::string source;
        int flashsize, errors, line;
        std::vector<uint16_t> words;
    } cases[] = {
        // 63 words ahead and 64 back are the limits of a conditional branch.
        {"63 ahead", " BRNE FAR\n" + nops63 + "FAR: NOP\n", 8192, 0, 0, {0xF5F9}},
        {"64 ahead", " BRNE FAR\n" + nops63 + " NOP\nFAR: NOP\n", 8192, 1, 0, {}},
        {"64 back", "FAR: NOP\n" + nops63.substr(5) + " BRNE FAR\n", 8192, 0, 63, {0xF601}},
        {"65 back", "FAR: NOP\n" + nops63 + " BRNE FAR\n", 8192, 1, 0, {}},
        // RJMP and RCALL: 2047 ahead and 2048 back, in a memory too large for the wrap to help.
        {"2047 ahead", " RJMP FAR\n .ORG 2048\nFAR: NOP\n", 16384, 0, 0, {0xC7FF}},
        {"2048 ahead", " RJMP FAR\n .ORG 2049\nFAR: NOP\n", 16384, 1, 0, {}},
        {"2048 back", " .ORG 2047\nFAR: NOP\n .ORG 4094\n RCALL FAR\n", 16384, 0, 3, {0xD800}},
        {"2049 back", " .ORG 2047\nFAR: NOP\n .ORG 4095\n RCALL FAR\n", 16384, 1, 0, {}},
        // 4096 words: from word 1 the last word is 4093 beyond the next, which wraps to -3.
        {"wrap back", " NOP\n BRNE TOP\n .ORG 4095\nTOP: NOP\n", 8192, 0, 1, {0xF7E9}},
        {"2048 ahead wraps to -2048", " RJMP FAR\n .ORG 2049\nFAR: NOP\n", 8192, 0, 0, {0xC800}},
        {"4095 to 0 wraps to 0", "START: NOP\n .ORG 4095\n RJMP START\n", 8192, 0, 2, {0xC000}},
        {"a wrap that does not land in range", " BRNE MID\n .ORG 2000\nMID: NOP\n", 8192, 1, 0, {}},
        // Anything but a symbol is the offset itself; any kind of symbol is a target.
        {"$+2 at location 2", " NOP\n NOP\n RJMP $+2\n", 8192, 0, 2, {0xC004}},
        {"label plus one", "L: NOP\n RJMP L+1\n", 8192, 0, 1, {0xC001}},
        {"plain offset", " BREQ 5\n", 8192, 0, 0, {0xF029}},
        {"R5 is word 5", " NOP\n RJMP R5\n", 8192, 0, 1, {0xC003}},
        // JMP and CALL take word addresses without wrap.
        {"jmp", " JMP TARGET\n .ORG $1000\nTARGET: CALL TARGET\n", 8192, 0, 0, {0x940C, 0x1000}},
        {"call", " JMP TARGET\n .ORG $1000\nTARGET: CALL TARGET\n", 8192, 0, 2, {0x940E, 0x1000}},
    };
    for (const auto& c : cases) {
        AsmModel model = smallmodel();
        model.flashsize = c.flashsize;
        const AsmContext ctx = assemble(c.source, model);
        EXPECT_EQ(ctx.asmerrors, c.errors) << c.why;
        if (c.errors == 0) { EXPECT_EQ(opcodewords(ctx.lines.at(c.line).opcode), c.words) << c.why; }
    }
}

TEST(AsmInstructions, ImmediatesAcceptEveryOperandForm) {
    EXPECT_EQ(ldivalue("'A'"), 65);
    EXPECT_EQ(ldivalue("A'a'"), 97);
    EXPECT_EQ(ldivalue("PORTB"), 0x18);
    EXPECT_EQ(ldivalue("PORTB+1"), 0x19);
    EXPECT_EQ(ldivalue("low RAMEND"), 0x5F);
    EXPECT_EQ(ldivalue("255"), 255);
    // The operand text is not trimmed inside: a prefix wants exactly one blank.
    EXPECT_EQ(ldivalue("low  $1234"), -1);
}

TEST(AsmInstructions, TheOpcodeTextIsInMemoryOrder) {
    EXPECT_EQ(assembleline("BREAK").line().opcode, "9895");
    EXPECT_EQ(assembleline("JMP $12345").line().opcode, "0D944523");
    EXPECT_EQ(assembleline("NOP").line().opcode, "0000");
}

}  // namespace
}  // namespace velmora::test
