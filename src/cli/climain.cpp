#include <iostream>

#include "cli/commands.h"
#include "cli/options.h"

namespace velmora {

namespace {

struct Command {
    const char* name;
    int (*run)(const std::vector<std::string>&, std::ostream&, std::ostream&);
};

// One place names every sub-command, for the dispatch and for the usage text.
constexpr Command kCommands[] = {
    {"models", modelscommand},
    {"run", runcommand},
    {"asm", asmcommand},
    {"basic", basiccommand},
    {"disasm", disasmcommand},
};

void usage(std::ostream& to) {
    to << "usage: velmora-cli COMMAND [OPTIONS]\n"
          "       velmora-cli --help | --version\n"
          "commands:\n"
          "  models  list the microcontroller models\n"
          "  run     run a program until it sleeps or stops\n"
          "  asm     assemble a source file into its listing and HEX file\n"
          "  basic   compile a BASIC source into assembler (and on into HEX)\n"
          "  disasm  list the program of a HEX file as instructions\n"
          "'velmora-cli COMMAND --help' describes a command and its options.\n";
}

}  // namespace

int clicommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        usage(err);
        return kExitUsage;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        usage(out);
        return 0;
    }
    if (args[0] == "--version") {
        out << "velmora-cli " << programversion() << "\n";
        return 0;
    }
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    for (const Command& command : kCommands)
        if (args[0] == command.name) return command.run(rest, out, err);
    err << "velmora-cli: unknown command '" << args[0] << "'\n";
    usage(err);
    return kExitUsage;
}

int climain(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    return clicommand(args, std::cout, std::cerr);
}

}  // namespace velmora
