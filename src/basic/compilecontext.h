#pragma once
// The one context of a BASIC compile: source rows, generated lines, symbols and the memory
// plan. Statement handlers read and extend it; a sweep resets it.

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "basic/basicmodel.h"

namespace velmora {

// Operand type codes shared by every statement handler.
enum BasicType : int {
    kTypeNone = 0,       // a constant, or unknown
    kTypeBit = 1,
    kTypeByte = 2,
    kTypeWord = 3,
    kTypeByteIndexed = 4,  // Byte array element with a variable index
    kTypeWordIndexed = 5,  // Word array element with a variable index
    kTypeLong = 6,
};

// Data memory usage marks, as the Data Memory Usage window colours them.
enum MemoryUse : int { kMemUnused = 0, kMemSpecial = 1, kMemAvailable = 2, kMemCodeRegister = 3, kMemVariable = 4 };

// Register availability for variables.
enum RegisterState : int { kRegUnavailable = 0, kRegFree = 1, kRegTaken = 2 };

struct SourceRow {
    std::string statement;
    std::string comment;    // empty, or a blank and the comment from its apostrophe on
    std::string label;      // generated label of a row with a user label
    std::string username;   // the user's label name
};

struct SymbolEntry {
    std::string name;
    int32_t address = 0;  // a Bit: byte address * 100 + bit; indexed: base * 10000 + index address
    int type = kTypeNone;
};

struct ConstantEntry {
    std::string name;
    std::string value;
};

// Totals of the declaration scan, checked against the memory there is.
struct MemoryPlan {
    int bits = 0, bytes = 0, words = 0, longs = 0;
    int system = 0;
};

// Per generated line, for the jump relaxation of large models.
struct JumpLine {
    std::string label;   // the line's own label, upper case
    std::string jump;    // "RJMP", "RCALL" or empty
    std::string target;  // upper case
    int targetindex = -1;
};

struct WhileLevel {
    std::string start, end;
};

struct ForLevel {
    std::string variable, start, exit, step;
};

struct IfLevel {
    std::string first;   // the false target
    std::string second;  // the end target, set by Else
    bool haselse = false;
};

struct SelectLevel {
    std::string variable;
    int count = 0;  // Case branches opened
};

// A Proc or Function header: its arguments live in global variables with made-up names.
struct RoutineArgument {
    std::string name;
    std::string type;  // "Bit", "Byte", "Word" or "Long"
};

struct RoutineEntry {
    std::string name;
    std::string label;
    std::vector<RoutineArgument> arguments;  // at most five
    std::string resulttype;                  // a Function's; empty for a Proc
};

struct CompileOptions {
    bool allowarbitrarybitnames = false;  // "Allow Arbitrary Use of Official Bit Names"
    bool compatiblelisting = false;       // "MPASMWIN Listing"
};

struct CompileContext {
    const BasicModel* model = nullptr;
    CompileOptions options;
    bool secondsweep = false;

    // Source, rows from 1.
    std::vector<SourceRow> rows;  // rows[0] is unused
    int currentline = 0;
    int sourcelinecount() const { return static_cast<int>(rows.size()) - 1; }

    // Output.
    std::vector<std::string> outputlines;
    int outputwords = 0;
    std::vector<int> lineaddress;
    std::vector<JumpLine> jumplines;  // kept only above 4096 flash words
    int generatedlabelcount = 0;

    // Runtime routines requested, by routine number.
    std::array<bool, 101> routineused{};
    std::array<bool, 101> routineusedininterrupt{};
    std::string interrupttext;  // survives from the first sweep into the second
    bool ininterrupt = false;

    // Names.
    std::vector<SymbolEntry> symbols;
    std::vector<BasicBitName> bitnames;
    std::vector<ConstantEntry> constants;
    std::vector<SymbolEntry> temporaries;  // brindlewood_temp_1, _2, ... in order of creation
    MemoryPlan plan;

    // Memory.
    std::vector<int> memoryusage;           // per data address, MemoryUse
    std::array<int, 32> registerstate{};    // RegisterState per R0..R31
    std::vector<int> sramaddresses;         // the model's SRAM, or the virtual stand-in
    std::vector<bool> sramused;             // parallel to sramaddresses
    bool virtualsram = false;
    int bitcounter = -1;
    int bitlocation = 0;

    // Flags the declaration scan raises for the generator.
    bool startfromzero = false;
    bool stephold = false;
    bool i2cprepare = false;
    bool spiprepare = false;
    bool interrupts = false;
    std::vector<bool> interruptused;         // parallel to model->interrupts
    std::vector<std::string> interruptlabel;  // parallel to model->interrupts
    std::string exitlabel;
    bool afterend = false;

    // Procedures and functions, from 1 in order of declaration; 0 is outside any body.
    std::vector<RoutineEntry> proctable;
    std::vector<RoutineEntry> functiontable;
    int currentproc = 0, currentfunction = 0;
    int lastproc = 0, lastfunction = 0;
    bool uartopened = false;  // an Hseropen row has been compiled
    bool lcdinitialised = false;  // an Lcdinit row has been compiled

    // Open statement blocks.
    std::vector<WhileLevel> whilestack;
    std::vector<ForLevel> forstack;
    std::vector<IfLevel> ifstack;
    std::vector<SelectLevel> selectstack;

    // Define parameters by name; the clock is kept apart.
    std::map<std::string, int> defines;
    double clockmhz = 0;
    bool clockdefined = false;  // CLOCK_FREQUENCY set the clock

    // The first error ends the compile: its text behind "Error in line N".
    std::string error;
    bool errorhasline = true;  // false for the memory box, which names no line
    std::vector<std::string> warnings;  // boxes that do not stop the compile
};

// Records the first error and returns false, so handlers can `return fail(ctx, "...")`.
bool fail(CompileContext& ctx, const std::string& message);

}  // namespace velmora
