// Every mnemonic: its words for boundary operands, the operands it refuses, its argument
// count, and the operand rewriting. The expected words come from avr-as
// (data/make-encoding-table.py prints them), not from this assembler.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asminstructions.h"

namespace velmora::test {
namespace {

struct Encoding {
    const char* statement;
    std::vector<uint16_t> words;
};

const std::vector<Encoding>& encodings() {
    static const std::vector<Encoding> table = {
        // RegReg
        {"ADC R0,R31", {0x1E0F}},
        {"ADD R31,R0", {0x0DF0}},
        {"AND R16,R15", {0x210F}},
        {"CP R1,R17", {0x1611}},
        {"CPC R5,R10", {0x045A}},
        {"CPSE R31,R31", {0x13FF}},
        {"EOR R2,R3", {0x2423}},
        {"MOV R30,R1", {0x2DE1}},
        {"MUL R0,R0", {0x9C00}},
        {"OR R17,R16", {0x2B10}},
        {"SBC R15,R16", {0x0AF0}},
        {"SUB R8,R24", {0x1A88}},
        // RegSelf
        {"ROL R0", {0x1C00}},
        {"LSL R31", {0x0FFF}},
        {"TST R16", {0x2300}},
        {"CLR R15", {0x24FF}},
        // Reg
        {"ASR R0", {0x9405}},
        {"COM R31", {0x95F0}},
        {"DEC R16", {0x950A}},
        {"INC R15", {0x94F3}},
        {"LSR R1", {0x9416}},
        {"NEG R30", {0x95E1}},
        {"POP R0", {0x900F}},
        {"PUSH R31", {0x93FF}},
        {"ROR R17", {0x9517}},
        {"SWAP R9", {0x9492}},
        // RegImmediate
        {"SER R16", {0xEF0F}},
        {"SER R31", {0xEFFF}},
        {"ANDI R16,0", {0x7000}},
        {"CPI R31,255", {0x3FFF}},
        {"LDI R20,$A5", {0xEA45}},
        {"ORI R23,1", {0x6071}},
        {"SBR R17,$80", {0x6810}},
        {"SBCI R30,$0F", {0x40EF}},
        {"SUBI R16,$F0", {0x5F00}},
        {"CBR R16,0", {0x7F0F}},
        {"CBR R31,255", {0x70F0}},
        {"CBR R16,1", {0x7F0E}},
        // RegBit
        {"BLD R0,0", {0xF800}},
        {"BST R31,7", {0xFBF7}},
        {"SBRC R9,3", {0xFC93}},
        {"SBRS R16,5", {0xFF05}},
        {"BCLR 0", {0x9488}},
        {"BCLR 7", {0x94F8}},
        {"BSET 0", {0x9408}},
        {"BSET 7", {0x9478}},
        // Multiply
        {"MULS R16,R31", {0x020F}},
        {"MULS R31,R16", {0x02F0}},
        {"MULSU R16,R23", {0x0307}},
        {"MULSU R23,R16", {0x0370}},
        {"FMUL R16,R23", {0x030F}},
        {"FMULS R23,R16", {0x03F0}},
        {"FMULSU R17,R22", {0x039E}},
        {"MOVW R0,R30", {0x010F}},
        {"MOVW R30,R0", {0x01F0}},
        {"MOVW R24,R2", {0x01C1}},
        // WordImmediate
        {"ADIW R24,0", {0x9600}},
        {"ADIW R26,63", {0x96DF}},
        {"ADIW R28,32", {0x96A0}},
        {"ADIW R30,15", {0x963F}},
        {"SBIW R24,63", {0x97CF}},
        {"SBIW R26,0", {0x9710}},
        {"SBIW R28,16", {0x9760}},
        {"SBIW R30,47", {0x97BF}},
        // Io
        {"IN R0,0", {0xB000}},
        {"IN R31,63", {0xB7FF}},
        {"IN R16,$2A", {0xB50A}},
        {"OUT 0,R0", {0xB800}},
        {"OUT 63,R31", {0xBFFF}},
        {"OUT $2A,R16", {0xBD0A}},
        {"CBI 0,0", {0x9800}},
        {"SBIC 31,7", {0x99FF}},
        {"SBI 17,2", {0x9A8A}},
        {"SBIS 5,5", {0x9B2D}},
        // Direct
        {"LDS R0,0", {0x9000, 0x0000}},
        {"LDS R31,65535", {0x91F0, 0xFFFF}},
        {"LDS R16,$1234", {0x9100, 0x1234}},
        {"STS 0,R0", {0x9200, 0x0000}},
        {"STS 65535,R31", {0x93F0, 0xFFFF}},
        {"STS $1234,R16", {0x9300, 0x1234}},
        {"JMP 0", {0x940C, 0x0000}},
        {"JMP $3FFFFF", {0x95FD, 0xFFFF}},
        {"JMP $12345", {0x940D, 0x2345}},
        {"CALL $10000", {0x940F, 0x0000}},
        {"CALL $1FFFF", {0x940F, 0xFFFF}},
        {"CALL 1000", {0x940E, 0x03E8}},
        // Relative
        {"RJMP 0", {0xC000}},
        {"RJMP 2047", {0xC7FF}},
        {"RJMP -2048", {0xC800}},
        {"RJMP -1", {0xCFFF}},
        {"RCALL 5", {0xD005}},
        {"RCALL -5", {0xDFFB}},
        {"BRCS 63", {0xF1F8}},
        {"BRLO -64", {0xF200}},
        {"BREQ 1", {0xF009}},
        {"BRMI -1", {0xF3FA}},
        {"BRVS 10", {0xF053}},
        {"BRLT -10", {0xF3B4}},
        {"BRHS 0", {0xF005}},
        {"BRTS 32", {0xF106}},
        {"BRIE -32", {0xF307}},
        {"BRCC 63", {0xF5F8}},
        {"BRSH -64", {0xF600}},
        {"BRNE -2", {0xF7F1}},
        {"BRPL 2", {0xF412}},
        {"BRVC 7", {0xF43B}},
        {"BRGE -7", {0xF7CC}},
        {"BRHC 20", {0xF4A5}},
        {"BRTC -20", {0xF766}},
        {"BRID 3", {0xF41F}},
        {"BRBS 0,63", {0xF1F8}},
        {"BRBS 7,-64", {0xF207}},
        {"BRBC 3,5", {0xF42B}},
        {"BRBC 7,-1", {0xF7FF}},
        // Fixed
        {"BREAK", {0x9598}},
        {"CLC", {0x9488}},
        {"CLH", {0x94D8}},
        {"CLI", {0x94F8}},
        {"CLN", {0x94A8}},
        {"CLS", {0x94C8}},
        {"CLT", {0x94E8}},
        {"CLV", {0x94B8}},
        {"CLZ", {0x9498}},
        {"EICALL", {0x9519}},
        {"EIJMP", {0x9419}},
        {"ICALL", {0x9509}},
        {"IJMP", {0x9409}},
        {"NOP", {0x0000}},
        {"RET", {0x9508}},
        {"RETI", {0x9518}},
        {"SEC", {0x9408}},
        {"SEH", {0x9458}},
        {"SEI", {0x9478}},
        {"SEN", {0x9428}},
        {"SES", {0x9448}},
        {"SET", {0x9468}},
        {"SEV", {0x9438}},
        {"SEZ", {0x9418}},
        {"SLEEP", {0x9588}},
        {"SPM", {0x95E8}},
        {"WDR", {0x95A8}},
        // Pointer
        {"LD R0,X", {0x900C}},
        {"LD R31,X+", {0x91FD}},
        {"LD R1,-X", {0x901E}},
        {"LD R2,Y", {0x8028}},
        {"LD R3,Y+", {0x9039}},
        {"LD R4,-Y", {0x904A}},
        {"LD R5,Z", {0x8050}},
        {"LD R6,Z+", {0x9061}},
        {"LD R7,-Z", {0x9072}},
        {"ST X,R0", {0x920C}},
        {"ST X+,R31", {0x93FD}},
        {"ST -X,R1", {0x921E}},
        {"ST Y,R2", {0x8228}},
        {"ST Y+,R3", {0x9239}},
        {"ST -Y,R4", {0x924A}},
        {"ST Z,R5", {0x8250}},
        {"ST Z+,R6", {0x9261}},
        {"ST -Z,R7", {0x9272}},
        {"LPM", {0x95C8}},
        {"ELPM", {0x95D8}},
        {"LPM R0,Z", {0x9004}},
        {"LPM R31,Z+", {0x91F5}},
        {"ELPM R16,Z", {0x9106}},
        {"ELPM R1,Z+", {0x9017}},
        {"LDD R0,Y+0", {0x8008}},
        {"LDD R31,Y+63", {0xADFF}},
        {"LDD R5,Z+32", {0xA050}},
        {"LDD R6,Z+24", {0x8C60}},
        {"LDD R7,Y+7", {0x807F}},
        {"STD Y+0,R0", {0x8208}},
        {"STD Z+63,R31", {0xAFF7}},
        {"STD Y+32,R5", {0xA258}},
        {"STD Z+24,R6", {0x8E60}},
        {"STD Z+7,R7", {0x8277}},
    };
    return table;
}

TEST(AsmInstructions, WordsAgreeWithAvrAs) {
    for (const Encoding& e : encodings()) {
        const OneLine one = assembleline(e.statement);
        EXPECT_FALSE(one.line().errorflag) << e.statement << ": " << one.line().errortext;
        EXPECT_EQ(one.words(), e.words) << e.statement;
    }
}

TEST(AsmInstructions, TheTableHoldsAll114MnemonicsAndTheTestsReachEach) {
    std::set<std::string> tested;
    for (const Encoding& e : encodings()) tested.insert(std::string(e.statement).substr(0, std::string(e.statement).find(' ')));
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

std::string nops(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += " NOP\n";
    return text;
}

TEST(AsmBranches, TheRangeLimitsOfLabelTargets) {
    // 63 words ahead and 64 back are the limits of a conditional branch.
    EXPECT_EQ(assemble(" BRNE FAR\n" + nops(63) + "FAR: NOP\n").asmerrors, 0);
    EXPECT_EQ(assemble(" BRNE FAR\n" + nops(64) + "FAR: NOP\n").asmerrors, 1);
    EXPECT_EQ(assemble("FAR: NOP\n" + nops(62) + " BRNE FAR\n").asmerrors, 0);
    EXPECT_EQ(assemble("FAR: NOP\n" + nops(63) + " BRNE FAR\n").asmerrors, 1);
    // RJMP and RCALL: 2047 ahead and 2048 back, in a memory too large for the wrap to help.
    AsmModel large = smallmodel();
    large.flashsize = 16384;
    EXPECT_EQ(assemble(" RJMP FAR\n .ORG 2048\nFAR: NOP\n", large).asmerrors, 0);
    EXPECT_EQ(assemble(" RJMP FAR\n .ORG 2049\nFAR: NOP\n", large).asmerrors, 1);
    EXPECT_EQ(assemble(" .ORG 2047\nFAR: NOP\n .ORG 4094\n RCALL FAR\n", large).asmerrors, 0);
    EXPECT_EQ(assemble(" .ORG 2047\nFAR: NOP\n .ORG 4095\n RCALL FAR\n", large).asmerrors, 1);
}

TEST(AsmBranches, TargetsWrapAroundProgramMemory) {
    // 4096 words: from word 1 the last word is 4093 beyond the next, which wraps to -3.
    AsmContext ctx = assemble(" NOP\n BRNE TOP\n .ORG 4095\nTOP: NOP\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[1].opcode).at(0), 0xF7E9);
    // In this memory no forward RJMP is out of reach: 2048 ahead wraps to -2048.
    ctx = assemble(" RJMP FAR\n .ORG 2049\nFAR: NOP\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[0].opcode).at(0), 0xC800);
    // And from the end back to the start: 4095 to 0 is -4096, which wraps to 0.
    ctx = assemble("START: NOP\n .ORG 4095\n RJMP START\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode).at(0), 0xC000);
    // A wrap that does not land in range leaves the offset as it was, which is refused.
    ctx = assemble(" BRNE MID\n .ORG 2000\nMID: NOP\n");
    EXPECT_EQ(ctx.asmerrors, 1);
}

TEST(AsmBranches, AnythingButASymbolIsTheOffsetItself) {
    AsmContext ctx = assemble(" NOP\n NOP\n RJMP $+2\n");
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode).at(0), 0xC004);  // location 2 plus 2
    ctx = assemble("L: NOP\n RJMP L+1\n BREQ 5\n");
    EXPECT_EQ(opcodewords(ctx.lines[1].opcode).at(0), 0xC001);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode).at(0), 0xF029);
    // Any kind of symbol counts as a target: R5 is word 5.
    ctx = assemble(" NOP\n RJMP R5\n");
    EXPECT_EQ(opcodewords(ctx.lines[1].opcode).at(0), 0xC003);
}

TEST(AsmInstructions, JumpsTakeWordAddressesWithoutWrap) {
    const AsmContext ctx = assemble(" JMP TARGET\n .ORG $1000\nTARGET: CALL TARGET\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[0].opcode), (std::vector<uint16_t>{0x940C, 0x1000}));
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode), (std::vector<uint16_t>{0x940E, 0x1000}));
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
