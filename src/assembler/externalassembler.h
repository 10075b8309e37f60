#pragma once
// Assemble With AVR Assembler: runs Atmel's command-line assembler on a copy of the source
// under a short fixed name and brings its listing and HEX file back beside the source.

#include <functional>
#include <string>
#include <vector>

namespace velmora {

inline constexpr const char* kAvrAssemblerPathSetting = "AVR Assembler Path";
// Where the tool is looked for when the setting has never been written.
inline constexpr const char* kAvrAssemblerDefaultPath = "/usr/local/bin/avrasm2";
inline constexpr const char* kAsmToolMissing = "The file do not exist.";

// The tool's include file for a model: at90s8515 -> 8515def.inc, attiny2313 ->
// tn2313def.inc, atmega32 -> m32def.inc; any other name -> "<name>def.inc".
std::string asmincludefilename(const std::string& modelname);

// The tool's arguments after its path: -i <include> -fI -l <listing> <source>.
std::vector<std::string> asmexternalarguments(const std::string& include, const std::string& listing,
                                              const std::string& source);

// The whole command line as one text, for showing it.
std::string asmexternalcommandline(const std::string& toolpath, const std::vector<std::string>& arguments);

struct ExternalAsmRequest {
    std::string toolpath;
    std::string modelname;
    std::string folder;      // of the source, where the outputs go
    std::string filename;    // the source, without folder
    std::string tempfolder;  // where the short-named copy is made; the system's temporary folder if empty
    // One wait of 200 ms; the run waits for at most 11 of them. Sleeps if not set.
    std::function<void()> tick;
};

struct ExternalAsmResult {
    bool ok = false;
    std::string message;  // "The file do not exist." or the failure text; empty on success
    bool haslisting = false;
    std::string listingpath;  // "<folder>/<base>.lst"
};

ExternalAsmResult asmexternal(const ExternalAsmRequest& request);

}  // namespace velmora
