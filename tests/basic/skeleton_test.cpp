// The program frame around the rows, for the kinds of model that change it: SRAM above and
// below 256 data locations (SPH set or not), no SRAM (no stack set-up), flash above 4096 words.

#include <filesystem>

#include "basicfixture.h"
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

}  // namespace
}  // namespace velmora::test
