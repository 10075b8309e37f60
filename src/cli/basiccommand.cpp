#include <cstdlib>
#include <ostream>
#include <sstream>
#include <string>

#include "basic/basicfile.h"
#include "cli/commands.h"
#include "cli/diagnostics.h"
#include "cli/options.h"
#include "cli/session.h"

namespace velmora {

namespace {
constexpr CommandText kBasic = {
    "basic", "[--model NAME] [--clock MHZ] [--assemble] [--compatible] FILE.bas",
    "Compiles a BASIC source as the BASIC Compiler window's Compile does: FILE.asm beside the\n"
    "source and the report on stdout. A compile error is printed on stderr as the window's box\n"
    "shows it (\"Error in line N: ...\") and again as FILE:N: error: TEXT; no file is written\n"
    "then. Exit 3 on a compile or assembly error.\n"
    "options:\n"
    "  --model NAME    microcontroller model (default: the default model)\n"
    "  --clock MHZ     clock frequency the program is compiled for (default 4)\n"
    "  --assemble      also assemble FILE.asm into FILE.lst and FILE.hex, as Compile & Assemble\n"
    "  --compatible    write the listing an older assembler takes: no .END, RAMEND as numbers\n"
    "  --help          this text\n"};

}  // namespace

int basiccommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(args, {"--model", "--clock"}, {"--assemble", "--compatible"});
    if (parsed.help) {
        printhelp(kBasic, out);
        return 0;
    }
    if (!parsed.error.empty()) return usageerror(kBasic, parsed.error, err);
    if (parsed.positional.size() != 1)
        return usageerror(kBasic, parsed.positional.empty() ? "no source file given" : "more than one file given", err);
    BasicFileRequest request;
    if (const std::optional<std::string> clock = parsed.value("--clock")) {
        char* end = nullptr;
        request.clockmhz = std::strtod(clock->c_str(), &end);
        if (end == clock->c_str() || *end != '\0' || !(request.clockmhz > 0 && request.clockmhz <= 100))
            return usageerror(kBasic, "--clock takes a frequency in MHz above 0 and up to 100", err);
    }
    const std::optional<std::string> model = modelnamed(parsed.value("--model"), err);
    if (!model) return kExitInputError;
    request.path = parsed.positional[0];
    request.modelname = *model;
    request.modeldir = modeldirectory();
    request.assemble = parsed.has("--assemble");
    request.compatible = parsed.has("--compatible");
    std::ostringstream rows;
    const BasicBuildResult result = basiccompilefile(request, rows, err);
    out << rows.str();
    printbasicerrors(request.path, result, rows.str(), err);
    return result.ok() ? 0 : kExitInputError;
}

}  // namespace velmora
