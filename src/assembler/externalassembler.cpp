#include "assembler/externalassembler.h"

#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "assembler/asmassemble.h"
#include "assembler/asmcommands.h"
#include "assembler/asmtext.h"

extern char** environ;

namespace velmora {

namespace {

namespace fs = std::filesystem;

constexpr const char* kTempBase = "00000000";
constexpr int kWaitTicks = 11;

bool isfile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

void removefile(const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

bool copyfile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return !error;
}

// Starts the tool and waits until it ends or the ticks run out; a tool that outlives them
// is left running, and whatever files it has written by then are taken.
void runtool(const std::string& toolpath, const std::vector<std::string>& arguments, const std::function<void()>& tick) {
    std::vector<std::string> argv{toolpath};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& argument : argv) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawn(&pid, toolpath.c_str(), nullptr, nullptr, pointers.data(), environ) != 0) return;
    for (int i = 0; i < kWaitTicks; ++i) {
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) == pid) return;
        if (tick)
            tick();
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    int status = 0;
    waitpid(pid, &status, WNOHANG);
}

}  // namespace

std::string asmincludefilename(const std::string& modelname) {
    const std::string name = lowercase(modelname);
    if (name.starts_with("at90s")) return name.substr(5) + "def.inc";
    if (name.starts_with("attiny")) return "tn" + name.substr(6) + "def.inc";
    if (name.starts_with("atmega")) return "m" + name.substr(6) + "def.inc";
    return name + "def.inc";
}

std::vector<std::string> asmexternalarguments(const std::string& include, const std::string& listing,
                                              const std::string& source) {
    return {"-i", include, "-fI", "-l", listing, source};
}

std::string asmexternalcommandline(const std::string& toolpath, const std::vector<std::string>& arguments) {
    std::string line = toolpath;
    for (const std::string& argument : arguments) line += " " + argument;
    return line;
}

ExternalAsmResult asmexternal(const ExternalAsmRequest& request) {
    ExternalAsmResult result;
    if (!isfile(request.toolpath)) {
        result.message = kAsmToolMissing;
        return result;
    }
    const fs::path folder(request.folder);
    const std::string base = asmbasename(request.filename);
    const fs::path listing = folder / (base + ".lst");
    const fs::path hex = folder / (base + ".hex");
    asmdeleteoutputs(request.folder, request.filename);

    const fs::path temp = request.tempfolder.empty() ? fs::temp_directory_path() : fs::path(request.tempfolder);
    const fs::path tempsource = temp / (std::string(kTempBase) + ".asm");
    const fs::path templisting = temp / (std::string(kTempBase) + ".lst");
    const fs::path temphex = temp / (std::string(kTempBase) + ".hex");
    removefile(tempsource);
    copyfile(folder / request.filename, tempsource);

    runtool(request.toolpath,
            asmexternalarguments(asmincludefilename(request.modelname), templisting.string(), tempsource.string()),
            request.tick);

    if (isfile(templisting)) copyfile(templisting, listing);
    if (isfile(temphex)) copyfile(temphex, hex);
    for (const fs::path& file : {tempsource, templisting, temphex}) removefile(file);

    result.listingpath = listing.string();
    result.haslisting = isfile(listing);
    result.ok = result.haslisting && isfile(hex);
    if (!result.ok)
        result.message = "Assembly was not successful.\nAVR Assembler failed to generate all the expected files " +
                         listing.string() + " and " + hex.string() + "!";
    return result;
}

}  // namespace velmora
