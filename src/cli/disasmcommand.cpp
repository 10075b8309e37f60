#include <ostream>
#include <optional>

#include "cli/commands.h"
#include "cli/session.h"
#include "disassembler/disasmlisting.h"

namespace velmora {

namespace {
void disasmusage(std::ostream& err) {
    err << "usage: velmora-cli disasm [--model NAME] [--layout normal|noopcodes|plain] FILE.hex\n";
}

std::optional<ListingLayout> layoutnamed(const std::string& name) {
    if (name == "normal") return ListingLayout::Normal;
    if (name == "noopcodes") return ListingLayout::WithoutOpcodes;
    if (name == "plain") return ListingLayout::Plain;
    return std::nullopt;
}
}  // namespace

// Loads a HEX file as Load Program does and prints the listing the Disassembler window shows.
int disasmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::optional<std::string> model;
    std::optional<std::string> file;
    ListingLayout layout = ListingLayout::Normal;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasvalue = i + 1 < args.size();
        if (a == "--model" && hasvalue) {
            model = args[++i];
        } else if (a == "--layout" && hasvalue) {
            const auto named = layoutnamed(args[++i]);
            if (!named) {
                err << "velmora-cli: unknown layout '" << args[i] << "'\n";
                disasmusage(err);
                return kExitUsage;
            }
            layout = *named;
        } else if (!a.empty() && a[0] != '-' && !file) {
            file = a;
        } else {
            disasmusage(err);
            return kExitUsage;
        }
    }
    if (!file) {
        disasmusage(err);
        return kExitUsage;
    }
    CliSession session(err);
    if (!session.selectmodel(model)) return kExitInputError;
    if (!session.loadprogram(*file)) return kExitInputError;
    out << disasmfile(session.machine(), layout);
    return 0;
}

}  // namespace velmora
