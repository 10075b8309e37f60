// The program frame around the rows, for the kinds of model that change it: SRAM above and
// below 256 data locations (SPH set or not), no SRAM (no stack set-up), flash above 4096 words.
// The compatible listing is what another assembler takes: avra assembled it (with the chip's
// include file in front) into NAME-MODEL.avra.hex beside the program, in data/programs and
// data/families (data/programs/make-avra-hex.sh), and the words must equal those the project's
// assembler makes of the ordinary listing.
//
// The three system tables of the BASIC Compiler window: their headers, and rows checked
// against the data sheets' register addresses, bit numbers and vectors.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "assembler/asmhexfile.h"
#include "basic/systemtables.h"
#include "basicfixture.h"
#include "image/hexreader.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

const char* const kComments = "' A comment only\r\n\r\n   ' an indented one\r\n";

// The version in the first line changes with releases; the rest is the frame.
std::string withoutversion(const std::string& text) {
    EXPECT_TRUE(text.starts_with("; Compiled with: Velmora v")) << text.substr(0, 40);
    return text.substr(text.find("\r\n"));
}

TEST(BasicSkeleton, CommentsOnlyGiveTheFrameAndAssembleCleanly) {
    for (const char* model : {"ATmega32", "ATmega8", "ATtiny13", "ATtiny12"}) {
        SCOPED_TRACE(model);
        const BasicCompileResult result = compilebasic(kComments, model);
        ASSERT_TRUE(result.ok) << result.error;
        const std::string expected =
            readfile(std::filesystem::path(VELMORA_TEST_DATA_DIR) / (std::string("skeleton-") + model + ".asm"));
        EXPECT_EQ(withoutversion(result.asmtext), withoutversion(expected));
        EXPECT_EQ(assemblegenerated(result.asmtext, model).asmerrors, 0);

        std::string unterminated = kComments;
        unterminated.resize(unterminated.size() - 2);
        EXPECT_EQ(compilebasic(unterminated, model).asmtext, result.asmtext) << "without the final line break";
        EXPECT_EQ(compilebasic("' A comment only\n\n   ' an indented one", model).asmtext, result.asmtext)
            << "with LF line ends";
    }
}

TEST(BasicSkeleton, WordCountFollowsTheInstructionsTheAssemblerPlaces) {
    // Two-word instructions, data directives and an .ORG, through ASM rows.
    const BasicCompileResult result = compilebasic(
        "ASM: LDS R17,0x60\r\n"
        "ASM: .DB 1,2,3\r\n"
        "ASM: .DW 1,2,3\r\n"
        "ASM: CALL far\r\n"
        "ASM:far: NOP\r\n");
    ASSERT_TRUE(result.ok) << result.error;
    const AsmContext assembled = assemblegenerated(result.asmtext, "ATmega32");
    ASSERT_EQ(assembled.asmerrors, 0);
    // CLR, LDI/OUT/LDI/OUT (5), LDS (2), .DB 3 bytes (2), .DW (3), CALL (2), NOP, self-jump.
    EXPECT_EQ(result.outputwords, 5 + 2 + 2 + 3 + 2 + 1 + 1);
}

TEST(BasicSkeleton, CompatibleListingHasNoEndAndNoRamend) {
    CompileOptions options;
    options.compatiblelisting = true;
    for (const char* model : {"ATmega32", "ATtiny13"}) {
        SCOPED_TRACE(model);
        const std::string text = compilebasic(kComments, model, options).asmtext;
        EXPECT_EQ(text.find(".END"), std::string::npos);
        EXPECT_EQ(text.find("RAMEND"), std::string::npos);
        EXPECT_TRUE(text.ends_with("; End of listing")) << text.substr(text.size() - 20);
    }
    const std::string mega32 = compilebasic(kComments, "ATmega32", options).asmtext;
    EXPECT_NE(mega32.find("\tLDI R16,0x5F\r\n"), std::string::npos);  // RAMEND 0x85F
    EXPECT_NE(mega32.find("\tLDI R16,0x08\r\n"), std::string::npos);
}

TEST(BasicSkeleton, ReportNamesSizeAndTooLargePrograms) {
    EXPECT_EQ(compilereport(9, 32768, "/p/x"),
              "The compilation process was successful.\nThe size of the generated code is 18 program bytes.\n"
              "Total 32768 program bytes available.\nOutput saved as /p/x.asm");
    EXPECT_TRUE(compilereport(513, 1024, "/p/x").starts_with("The program is too large.\n"));
    EXPECT_TRUE(compilereport(512, 1024, "/p/x").starts_with("The compilation process was successful."));
}

TEST(BasicSkeleton, FractionalClockWarnsAndStillCompiles) {
    BasicModel model = basicmodel("ATmega32");
    model.clockmhz = 3.6864;
    const BasicCompileResult result = basiccompile("", model, {});
    EXPECT_TRUE(result.ok);
    ASSERT_EQ(result.warnings.size(), 1u);
    EXPECT_EQ(result.warnings[0], kFractionalClockWarning);
    model.clockmhz = 8;
    EXPECT_TRUE(basiccompile("", model, {}).warnings.empty());
}

const std::filesystem::path kData = VELMORA_TEST_DATA_DIR;

TEST(BasicAvraCrossCheck, CompatibleListingsAssembleToTheSameWords) {
    int compared = 0;
    for (const char* folder : {"programs", "families"}) {
        for (const auto& entry : std::filesystem::directory_iterator(kData / folder)) {
            const std::string file = entry.path().filename().string();
            if (!file.ends_with(".avra.hex")) continue;
            const std::string stem = file.substr(0, file.size() - 9);
            const std::string program = stem.substr(0, stem.find('-')), model = stem.substr(stem.find('-') + 1);
            SCOPED_TRACE(std::string(folder) + "/" + stem);

            const BasicCompileResult result = compilebasic(readfile(kData / folder / (program + ".bas")), model);
            ASSERT_TRUE(result.ok) << result.error;
            AsmContext ours = assemblegenerated(result.asmtext, model);
            ASSERT_EQ(ours.asmerrors, 0);
            const int last = asmbuildimage(ours);

            std::vector<uint8_t> avra(ours.image.size(), 0);
            int highest = 0;
            std::ifstream in(entry.path(), std::ios::binary);
            ASSERT_TRUE(readintelhex(in, avra, highest).ok());
            EXPECT_EQ(highest, last + 1);
            for (int at = 0; at <= last; ++at)
                EXPECT_EQ(ours.image[static_cast<size_t>(at)], avra[static_cast<size_t>(at)]) << "byte " << at;
            ++compared;
        }
    }
    // 10 in programs; 13 family programs (all but lookup) on two models each, and the two
    // interrupt programs on their one model.
    EXPECT_EQ(compared, 10 + 13 * 2 + 2);
}

using TableFunction = std::string (*)(const BasicModel&);

std::vector<std::string> tablelines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

struct Header {
    const char* table;
    TableFunction function;
    const char* first;
    const char* rule;
};

TEST(SystemTables, HeadersAndEveryRowHasThreeColumns) {
    const Header headers[] = {
        {"variables", systemvariablestable, "Name\tType\tAddress", "------------------------"},
        {"bit names", systembitnamestable, "Name\tValue\tRegister", "-------------------------"},
        {"interrupts", systeminterruptstable, "Name\tVector\tDescription", "----------------------------"},
    };
    for (const Header& h : headers)
        for (const char* model : {"ATmega32", "ATtiny13", "ATmega128"}) {
            const std::vector<std::string> lines = tablelines(h.function(basicmodel(model)));
            ASSERT_GT(lines.size(), 2u) << h.table << " " << model;
            EXPECT_EQ(lines[0], h.first) << h.table << " " << model;
            EXPECT_EQ(lines[1], h.rule) << h.table << " " << model;
            for (size_t i = 2; i < lines.size(); ++i)
                EXPECT_EQ(std::count(lines[i].begin(), lines[i].end(), '\t'), 2) << h.table << " " << model << ": "
                                                                                   << lines[i];
        }
}

TEST(SystemTables, RowsFromTheDataSheets) {
    const std::map<std::string, TableFunction> tables = {
        {"variables", systemvariablestable}, {"bit names", systembitnamestable}, {"interrupts", systeminterruptstable}};
    for (const TableRow& row : statementrows("System tables: rows")) {
        const std::vector<std::string> lines = tablelines(tables.at(row[1])(basicmodel(row[0])));
        EXPECT_NE(std::find(lines.begin(), lines.end(), row[2]), lines.end()) << row.where;
    }
}

TEST(SystemTables, OneRowPerInterruptAndPerNamedBit) {
    // ATmega32: vectors 1 to 20 behind the reset; ATtiny13: 1 to 9.
    EXPECT_EQ(tablelines(systeminterruptstable(basicmodel("ATmega32"))).size(), 2u + 20u);
    EXPECT_EQ(tablelines(systeminterruptstable(basicmodel("ATtiny13"))).size(), 2u + 9u);
    const BasicModel& m32 = basicmodel("ATmega32");
    EXPECT_EQ(tablelines(systembitnamestable(m32)).size(), 2u + m32.bitnames.size());
}

}  // namespace
}  // namespace velmora::test
