// Assemble With AVR Assembler, with a stand-in for the tool: a shell script that writes
// what it is asked to write, so that the copying and the failure texts can be seen.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "assembler/externalassembler.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

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
