#include <ostream>
#include <sstream>
#include <string>

#include "assembler/assemblefile.h"
#include "cli/commands.h"
#include "cli/diagnostics.h"
#include "cli/options.h"
#include "cli/session.h"

namespace velmora {

namespace {
constexpr CommandText kAsm = {
    "asm", "[--model NAME] FILE.asm",
    "Assembles a source file as the Assembler window's Assemble does: FILE.lst and FILE.hex\n"
    "beside the source, the error rows and their count on stdout, and no outputs left after\n"
    "errors. Each error also goes to stderr as FILE:LINE: error: TEXT. Exit 3 on errors.\n"
    "options:\n"
    "  --model NAME    microcontroller model whose symbols the source uses\n"
    "  --help          this text\n"};
}  // namespace

int asmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(args, {"--model"}, {});
    if (parsed.help) {
        printhelp(kAsm, out);
        return 0;
    }
    if (!parsed.error.empty()) return usageerror(kAsm, parsed.error, err);
    if (parsed.positional.size() != 1)
        return usageerror(kAsm, parsed.positional.empty() ? "no source file given" : "more than one file given", err);
    const std::optional<std::string> model = modelnamed(parsed.value("--model"), err);
    if (!model) return kExitInputError;
    const std::string& source = parsed.positional[0];
    std::ostringstream rows;
    const int errors = assemblefile(source, *model, modeldirectory(), rows, err);
    out << rows.str();
    printgnuerrors(source, errorsofrows(rows.str()), err);
    return errors == 0 ? 0 : kExitInputError;
}

}  // namespace velmora
