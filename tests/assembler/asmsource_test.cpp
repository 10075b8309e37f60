// Operand values: every number notation as the assembler reads it, the one-operator rule,
// "$", the byte prefixes and the rounding division (cases in data/tables.txt). Source
// handling: the preprocessor, labels, directives, the predefined symbols and the messages and
// error count of both passes (sources and what each line gives in data/sources.txt).
//
// The files of an assembly: listing and HEX goldens (data/output, the HEX files made and
// checked with avr-objcopy by make-hex-goldens.py), the base name, the error navigation
// lists, status reporting and the image rules.
//
// Assemble With AVR Assembler, with a stand-in for the tool: a shell script that writes
// what it is asked to write, so that the copying and the failure texts can be seen.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asmassemble.h"
#include "assembler/asmcommands.h"
#include "assembler/asmexpression.h"
#include "assembler/asmhexfile.h"
#include "assembler/asmlisting.h"
#include "assembler/asmpreprocess.h"
#include "assembler/externalassembler.h"
#include "image/hexreader.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

int32_t expected(const TableRow& row, int32_t invalid) {
    return row[1] == "invalid" ? invalid : static_cast<int32_t>(row.number(1));
}

// Predefined symbols of the small model, the location at word 300 and three source names.
AsmContext context() {
    AsmContext ctx = assemble(" .EQU TEN = 10\n .EQU NEG = -3\n .EQU BIG = 100000\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    ctx.asmlocation = 300;
    return ctx;
}

TEST(AsmNumbers, EveryNotationThroughDw) {
    for (const TableRow& row : tablerows("tables.txt", "Numbers through .DW"))
        EXPECT_EQ(dwvalue(row[0]), expected(row, -1)) << row.where;
    EXPECT_EQ(assembleline("LDI R16,0b2").line().errortext, "Invalid argument of the instruction.");
}

TEST(AsmNumbers, ALoneDollarIsTheLocationNotANumber) {
    // The number reader refuses "$"; the evaluator reads it as the location counter.
    EXPECT_EQ(parsenumber16("$"), kNotANumber16);
    const AsmContext ctx = assemble(" NOP\n NOP\n .DW $\n .DW $,$\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode), std::vector<uint16_t>{2});
    EXPECT_EQ(opcodewords(ctx.lines[3].opcode), (std::vector<uint16_t>{3, 3}));
}

TEST(AsmExpressions, OperatorsDivisionWideNumbersAndPrefixes) {
    const AsmContext ctx = context();
    for (const TableRow& row : tablerows("tables.txt", "Expressions"))
        EXPECT_EQ(asmevalexpr(ctx, row[0]), expected(row, kAsmInvalid)) << row.where;
}

TEST(AsmExpressions, TheLocationAboveWhatTheNumberReaderTakes) {
    AsmContext ctx = context();
    ctx.asmlocation = 65535;
    EXPECT_EQ(asmevalexpr(ctx, "$"), 65535);
    ctx.asmlocation = 65536;
    EXPECT_EQ(asmevalexpr(ctx, "$"), kAsmInvalid);
}

TEST(AsmExpressions, TermSentinel) {
    const AsmContext ctx = context();
    EXPECT_EQ(asmevalterm(ctx, "TEN*2"), 20);
    EXPECT_EQ(asmevalterm(ctx, "nonsense"), kNotANumber16);
    EXPECT_EQ(asmevalterm(ctx, "$10000"), kNotANumber16);
}

TEST(AsmPreprocess, ForeignDirectivesFunctionsSetAndDef) {
    for (const TableRow& row : tablerows("tables.txt", "Preprocess"))
        EXPECT_EQ(asmpreprocess(row[0]), row[1]) << row.where;
}

TEST(AsmPasses, SourcesAndWhatEachLineGives) { checksources("sources.txt"); }

TEST(AsmPredefined, ModelDefinitionsRegistersAndRamend) {
    AsmModel model = smallmodel();
    model.extendedio = 160;
    model.definitiontext.push_back(".equ WIDE = $12345");
    model.definitiontext.push_back(".equ LOWER = 3   ; trailing");
    const AsmContext ctx = assemble("", model);
    EXPECT_TRUE(ctx.lines.empty());
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(symbol(ctx, "PORTB"), 0x18);
    EXPECT_EQ(symbol(ctx, "DDRB"), 0x17);
    EXPECT_EQ(symbol(ctx, "SPL"), 0x3D);
    EXPECT_EQ(symbol(ctx, "SREG_I"), 7);
    EXPECT_EQ(symbol(ctx, "lower"), 3);
    EXPECT_EQ(symbol(ctx, "NOTEQU"), -12345);  // not a .EQU line
    EXPECT_EQ(symbol(ctx, "BROKEN"), -12345);  // no "="
    EXPECT_EQ(symbol(ctx, "WIDE"), kNotANumber16);  // read by the 16-bit reader
    for (int r = 0; r < 32; ++r) EXPECT_EQ(symbol(ctx, "R" + std::to_string(r)), r);
    const char* halves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(symbol(ctx, halves[i]), 26 + i);
    EXPECT_EQ(symbol(ctx, "RAMEND"), 1024 + 160 + 96 - 1);
    EXPECT_EQ(symbol(ctx, "X"), -12345);
    // The model's lines come first, in their order.
    EXPECT_EQ(ctx.symbols.front().name, "UDR");
    EXPECT_EQ(ctx.symbols.back().name, "RAMEND");
}

const std::filesystem::path kGoldens = std::filesystem::path(VELMORA_TEST_DATA_DIR) / "output";

struct Recorder : AsmProgress {
    std::vector<std::string> texts;
    int yields = 0;
    void status(const std::string& first, const std::string& second) override {
        texts.push_back(second.empty() ? first : first + " " + second);
    }
    void yield() override { ++yields; }
};

struct FileRun {
    AsmContext ctx;
    int mode = 0;
    bool ok = false;
    std::string failure;
};

FileRun assemblein(const TempFolder& folder, const std::string& filename, int mode = kAsmSilent,
               AsmProgress* progress = nullptr, const AsmModel& model = smallmodel()) {
    FileRun run;
    run.mode = mode;
    AsmEnvironment environment{folder.path().string(), model, progress};
    run.ok = asmassemble(run.ctx, filename, run.mode, environment, run.failure);
    return run;
}

class AsmGolden : public testing::TestWithParam<const char*> {};

TEST_P(AsmGolden, ListingAndHexFileAreExact) {
    const std::string name = GetParam();
    TempFolder folder;
    std::filesystem::copy_file(kGoldens / (name + ".asm"), folder / (name + ".asm"));
    const FileRun run = assemblein(folder, name + ".asm");
    ASSERT_TRUE(run.ok) << run.failure;
    EXPECT_EQ(readfile(folder / (name + ".lst")), readfile(kGoldens / (name + ".lst")));
    EXPECT_EQ(readfile(folder / (name + ".hex")), readfile(kGoldens / (name + ".hex")));
    EXPECT_EQ(run.mode, run.ctx.asmerrors);
}

INSTANTIATE_TEST_SUITE_P(Files, AsmGolden,
                         testing::Values("empty", "sixteen", "eighteen", "org100", "backorg", "errors"));

TEST(AsmOutput, TheErrorListsPointAtTheErrorRows) {
    TempFolder folder;
    std::filesystem::copy_file(kGoldens / "errors.asm", folder / "errors.asm");
    const FileRun run = assemblein(folder, "errors.asm");
    EXPECT_EQ(run.mode, 5);  // two failed checks on line 2, one row
    EXPECT_EQ(run.ctx.errorsourceline, (std::vector<int>{2, 4, 5, 6}));
    EXPECT_EQ(run.ctx.errorlistline, (std::vector<int>{7, 10, 12, 14}));
    EXPECT_EQ(asmerrorlistline(run.ctx, 4), 10);
    EXPECT_EQ(asmerrorlistline(run.ctx, 3), 0);
    // The rows sit where the numbers say, counting the listing's rows from 1.
    std::istringstream listing(readfile(folder / "errors.lst"));
    std::vector<std::string> rows;
    for (std::string row; std::getline(listing, row);) rows.push_back(row);
    EXPECT_EQ(rows.at(9), "0004 Error: Duplicate label.\r");
    EXPECT_EQ(asmerrorrows(run.ctx),
              (std::vector<std::string>{"0002 Error: Invalid argument of the instruction.", "0004 Error: Duplicate label.",
                                        "0005 Error: Unrecognized instruction.",
                                        "0006 Error: Incorrect syntax of the .EQU directive."}));
}

TEST(AsmOutput, TheBaseNameEndsAtTheFirstDot) {
    TempFolder folder;
    writefile(folder / "a.b.asm", " NOP\n");
    const FileRun run = assemblein(folder, "a.b.asm");
    EXPECT_TRUE(run.ok);
    EXPECT_TRUE(std::filesystem::exists(folder / "a.lst"));
    EXPECT_TRUE(std::filesystem::exists(folder / "a.hex"));
    EXPECT_EQ(asmbasename("a.b.asm"), "a");
    EXPECT_EQ(asmoutputpath(folder.path().string(), "a.b.asm", ".hex"), (folder / "a.hex").string());
}

TEST(AsmOutput, AReportingRunTellsEachStepAndLine) {
    TempFolder folder;
    writefile(folder / "p.asm", " NOP\n NOP\n");
    Recorder recorder;
    const FileRun run = assemblein(folder, "p.asm", 0, &recorder);
    EXPECT_EQ(run.mode, 0);
    EXPECT_EQ(recorder.texts,
              (std::vector<std::string>{"Loading source file.", "Performing pass 1. Line 1", "Performing pass 1. Line 2",
                                        "Performing pass 2. Line 1", "Performing pass 2. Line 2", "Writing LST file.",
                                        "Writing HEX file."}));
    EXPECT_EQ(recorder.yields, 4);

    Recorder silent;
    assemblein(folder, "p.asm", kAsmSilent, &silent);
    EXPECT_TRUE(silent.texts.empty());
    EXPECT_EQ(silent.yields, 0);
}

TEST(AsmOutput, AMissingSourceIsAFailureNotACrash) {
    TempFolder folder;
    const FileRun run = assemblein(folder, "missing.asm");
    EXPECT_FALSE(run.ok);
    EXPECT_FALSE(run.failure.empty());
    EXPECT_EQ(run.mode, 0);
}

TEST(AsmOutput, LineNumbersKeepTheirLastFourDigits) {
    std::string source;
    for (int i = 0; i < 12345; ++i) source += " NOP\n";
    AsmContext ctx = assemble(source, [] {
        AsmModel model = smallmodel();
        model.flashsize = 32768;
        return model;
    }());
    const std::string listing = asmlistingtext(ctx);
    EXPECT_NE(listing.find("\r\n2345    003038  0000     NOP\r\n"), std::string::npos);
    EXPECT_NE(listing.find("\r\n0000    00270F  0000     NOP\r\n"), std::string::npos);  // line 10000
}

TEST(AsmOutput, BytesBeyondProgramMemoryAreDropped) {
    AsmContext ctx = assemble(" .ORG 4095\n .DW $1122,$3344\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(asmbuildimage(ctx), 8191);
    EXPECT_EQ(ctx.image[8190], 0x22);
    EXPECT_EQ(ctx.image[8191], 0x11);
}

TEST(AsmOutput, TheLastByteStoredEndsTheImageNotTheHighest) {
    AsmContext ctx = assemble(" .ORG 100\n NOP\n .ORG 2\n RET\n");
    EXPECT_EQ(asmbuildimage(ctx), 5);
    EXPECT_EQ(asmhextext(ctx, 5), ":020000040000FA\r\n:060000000000000008955D\r\n:00000001FF\r\n");
}

TEST(AsmOutput, EachBlockOf64KiBIsAnnounced) {
    AsmModel model = smallmodel();
    model.flashsize = 131072;
    AsmContext ctx = assemble(" .ORG $7FFF\n NOP\n SLEEP\n", model);
    const int last = asmbuildimage(ctx);
    EXPECT_EQ(last, 0x10001);
    const std::string hex = asmhextext(ctx, last);
    EXPECT_TRUE(hex.starts_with(":020000040000FA\r\n"));
    EXPECT_NE(hex.find(":10FFF0000000000000000000000000000000000001\r\n:020000040001F9\r\n:020000008895E1\r\n"
                       ":00000001FF\r\n"),
              std::string::npos);
    // And the image reader of the program loader takes it back as it was.
    std::vector<uint8_t> memory(131072, 0xFF);
    int highest = 0;
    std::istringstream in(hex);
    EXPECT_TRUE(readintelhex(in, memory, highest).ok());
    EXPECT_EQ(highest, 0x10002);
    EXPECT_EQ(memory[0x10000], 0x88);
    EXPECT_EQ(memory[0x10001], 0x95);
    EXPECT_EQ(memory[0x0100], 0x00);
}

TEST(AsmCommands, WindowRulesWithoutTheWindow) {
    EXPECT_TRUE(asmsourceallowed("prog.asm"));
    EXPECT_TRUE(asmsourceallowed("prog.inc"));
    for (const char* refused : {"prog.hex", "PROG.HEX", "a.Obj", "x.lst"}) EXPECT_FALSE(asmsourceallowed(refused)) << refused;
    EXPECT_EQ(asmsaveasname("first.second.txt"), "first.asm");
    EXPECT_EQ(asmcaption("/home/u/p.asm"), "Assembler - /home/u/p.asm");
    EXPECT_EQ(asmfileofcaption("Assembler - /home/u/p.asm"), "/home/u/p.asm");
    EXPECT_EQ(asmfailuremessage(3), "Assembly was not successful.\nYour assembler source contains 3 errors.");
}

TEST(AsmCommands, DeletingTheOutputsLeavesTheSource) {
    TempFolder folder;
    writefile(folder / "p.asm", " NOP\n");
    assemblein(folder, "p.asm");
    asmdeleteoutputs(folder.path().string(), "p.asm");
    EXPECT_FALSE(std::filesystem::exists(folder / "p.lst"));
    EXPECT_FALSE(std::filesystem::exists(folder / "p.hex"));
    EXPECT_TRUE(std::filesystem::exists(folder / "p.asm"));
}

namespace fs = std::filesystem;

// A tool that writes its listing (the argument after -l) and, when `writehex`, the HEX file
// beside its source, and records its arguments.
fs::path faketool(const TempFolder& folder, bool writehex) {
    const fs::path tool = folder / "avrasm";
    std::string script = "#!/bin/sh\necho \"$@\" > \"" + (folder / "arguments.txt").string() + "\"\n";
    script += "echo listing > \"$5\"\n";
    if (writehex) script += "echo ':00000001FF' > \"${6%.asm}.hex\"\n";
    writefile(tool, script);
    fs::permissions(tool, fs::perms::owner_all);
    return tool;
}

ExternalAsmRequest request(const TempFolder& folder, const fs::path& tool) {
    fs::create_directory(folder / "src");
    fs::create_directory(folder / "tmp");
    writefile(folder / "src" / "prog.asm", " NOP\n");
    ExternalAsmRequest r;
    r.toolpath = tool.string();
    r.modelname = "ATmega32";
    r.folder = (folder / "src").string();
    r.filename = "prog.asm";
    r.tempfolder = (folder / "tmp").string();
    // The waits are real: the run ends as soon as the tool has ended, within 11 of them.
    return r;
}

TEST(AsmExternal, IncludeFileNamesFollowTheModelFamily) {
    EXPECT_EQ(asmincludefilename("AT90S8515"), "8515def.inc");
    EXPECT_EQ(asmincludefilename("ATtiny2313"), "tn2313def.inc");
    EXPECT_EQ(asmincludefilename("ATmega32"), "m32def.inc");
    EXPECT_EQ(asmexternalcommandline("tool", asmexternalarguments("m32def.inc", "l.lst", "s.asm")),
              "tool -i m32def.inc -fI -l l.lst s.asm");
}

TEST(AsmExternal, TheToolsFilesComeBackBesideTheSource) {
    TempFolder folder;
    const ExternalAsmResult result = asmexternal(request(folder, faketool(folder, true)));
    EXPECT_TRUE(result.ok) << result.message;
    EXPECT_EQ(readfile(folder / "src" / "prog.lst"), "listing\n");
    EXPECT_EQ(readfile(folder / "src" / "prog.hex"), ":00000001FF\n");
    EXPECT_EQ(readfile(folder / "arguments.txt"),
              "-i m32def.inc -fI -l " + (folder / "tmp" / "00000000.lst").string() + " " +
                  (folder / "tmp" / "00000000.asm").string() + "\n");
    // The three temporary files are gone.
    EXPECT_TRUE(fs::is_empty(folder / "tmp"));
}

TEST(AsmExternal, MissingOutputsAreReported) {
    TempFolder folder;
    const ExternalAsmResult result = asmexternal(request(folder, faketool(folder, false)));
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.haslisting);
    const std::string lst = (folder / "src" / "prog.lst").string();
    const std::string hex = (folder / "src" / "prog.hex").string();
    EXPECT_EQ(result.message, "Assembly was not successful.\nAVR Assembler failed to generate all the expected files " +
                                  lst + " and " + hex + "!");
}

TEST(AsmExternal, AMissingToolIsSaidSo) {
    TempFolder folder;
    const ExternalAsmResult result = asmexternal(request(folder, folder / "no-such-tool"));
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, "The file do not exist.");
}

}  // namespace
}  // namespace velmora::test
