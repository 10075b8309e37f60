#include "cli/programinput.h"

#include <stdlib.h>

#include <fstream>
#include <ostream>
#include <sstream>

#include "assembler/assemblefile.h"
#include "basic/basicfile.h"
#include "cli/diagnostics.h"
#include "cli/session.h"
#include "core/testmachine.h"
#include "core/textcase.h"
#include "image/elfload.h"
#include "image/hexload.h"

namespace velmora {

namespace {

bool hasextension(const std::string& path, const std::string& extension) {
    if (path.size() < extension.size()) return false;
    return sameignoringcase(path.substr(path.size() - extension.size()), extension);
}

// A fresh folder for the translated program, removed with everything in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "velmora-cli-XXXXXX").string();
        if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

std::optional<std::string> readwhole(const std::string& path) {
    std::error_code code;
    if (!std::filesystem::is_regular_file(path, code)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) return std::nullopt;
    return content.str();
}

// An Intel HEX or an ELF file, as Load Program reads them.
bool loadimage(Machine& m, const std::string& path, Messenger& messenger, std::vector<ElfSymbol>* symbols = nullptr) {
    // As Load Program does: clear, load, and on failure leave memory clean.
    m.programbytes = 0;
    fillunprogrammed(m);
    if (programload(m, path, messenger, symbols)) return true;
    m.programbytes = 0;
    fillunprogrammed(m);
    return false;
}

bool loadwordfile(Machine& m, const std::string& path, std::ostream& err) {
    const std::optional<std::string> content = readwhole(path);
    if (!content) {
        err << "velmora-cli: cannot open '" << path << "'\n";
        return false;
    }
    std::string error;
    const auto words = parsewordfile(*content, error);
    if (!words) {
        err << "velmora-cli: " << path << ": " << error << "\n";
        return false;
    }
    if (words->size() > static_cast<size_t>(m.flashwords)) {
        err << "velmora-cli: " << path << ": the program does not fit into program memory\n";
        return false;
    }
    loadwords(m, *words);
    m.programbytes = static_cast<int>(words->size() * 2);
    return true;
}

// Translators write their outputs beside the source, so they work on a copy in `folder`.
std::optional<std::filesystem::path> copyintofolder(const std::string& source, const std::filesystem::path& folder,
                                                    std::ostream& err) {
    const std::optional<std::string> text = readwhole(source);
    if (!text) {
        err << "velmora-cli: cannot open '" << source << "'\n";
        return std::nullopt;
    }
    const std::filesystem::path copy = folder / std::filesystem::path(source).filename();
    std::ofstream(copy, std::ios::binary) << *text;
    return copy;
}

}  // namespace

std::optional<std::filesystem::path> assembletohex(const std::string& source, const std::filesystem::path& folder,
                                                   Machine& m, std::ostream& err) {
    const std::optional<std::filesystem::path> copy = copyintofolder(source, folder, err);
    if (!copy) return std::nullopt;
    std::ostringstream rows;
    const int errors = assemblefile(copy->string(), m.modelname, modeldirectory(), rows, err);
    if (errors != 0) {
        err << rows.str();
        printgnuerrors(source, errorsofrows(rows.str()), err);
        return std::nullopt;
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (hasextension(entry.path().string(), ".hex")) return entry.path();
    err << "velmora-cli: " << source << ": the assembler wrote no HEX file\n";
    return std::nullopt;
}

std::optional<std::filesystem::path> compiletohex(const std::string& source, const std::filesystem::path& folder,
                                                  Machine& m, std::ostream& err) {
    const std::optional<std::filesystem::path> copy = copyintofolder(source, folder, err);
    if (!copy) return std::nullopt;
    BasicFileRequest request;
    request.path = copy->string();
    request.modelname = m.modelname;
    request.modeldir = modeldirectory();
    request.clockmhz = m.clockfrequency;
    request.assemble = true;
    std::ostringstream report;
    const BasicBuildResult result = basiccompilefile(request, report, err);
    if (result.compile.definedclock > 0) m.clockfrequency = static_cast<float>(result.compile.definedclock);
    if (!result.ok()) {
        if (result.asmerrors > 0) err << report.str();
        printbasicerrors(source, result, report.str(), err);
        return std::nullopt;
    }
    return std::filesystem::path(result.hexpath);
}

bool loadprogramfile(Machine& m, const std::string& path, Messenger& messenger, std::ostream& err,
                     ProgramCompanions* companions) {
    if (companions) *companions = {};
    // Read while a translation's files are still there.
    const auto basic = [companions](const std::string& hexpath) {
        if (companions) *companions = {loadbasicstepbystep(hexpath), loadbasicwatch(hexpath), {}};
    };
    for (const SourceKind& kind : kSourceKinds) {
        if (!hasextension(path, kind.extension)) continue;
        const ScratchFolder folder;
        if (folder.path().empty()) {
            err << "velmora-cli: no temporary folder for translating '" << path << "'\n";
            return false;
        }
        const std::optional<std::filesystem::path> hex = kind.build(path, folder.path(), m, err);
        if (hex) basic(hex->string());
        return hex && loadimage(m, hex->string(), messenger);
    }
    if (hasextension(path, ".hex")) {
        basic(path);
        return loadimage(m, path, messenger);
    }
    if (hasextension(path, ".elf")) return loadimage(m, path, messenger, companions ? &companions->symbols : nullptr);
    return loadwordfile(m, path, err);
}

std::optional<std::vector<uint16_t>> parsewordfile(const std::string& text, std::string& error) {
    std::vector<uint16_t> words;
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        line = line.substr(0, line.find(';'));
        std::istringstream tokens(line);
        std::string token;
        while (tokens >> token) {
            char* end = nullptr;
            const unsigned long value = std::strtoul(token.c_str(), &end, 16);
            if (*end != '\0' || value > 0xFFFF || token.size() > 4) {
                error = "line " + std::to_string(number) + ": '" + token + "' is not a 16-bit hexadecimal word";
                return std::nullopt;
            }
            words.push_back(static_cast<uint16_t>(value));
        }
    }
    return words;
}

}  // namespace velmora
