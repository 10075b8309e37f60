#include <iostream>

#include "cli/commands.h"

namespace velmora {

int runcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int modelscommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int disasmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

namespace {
void usage(std::ostream& err) {
    err << "usage: velmora-cli COMMAND [OPTIONS]\n"
           "commands:\n"
           "  models  list the microcontroller models\n"
           "  run     run a program until it sleeps or stops\n"
           "  asm     assemble a source file into its listing and HEX file\n"
           "  disasm  list the program of a HEX file as instructions\n";
}
}  // namespace

int clicommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        usage(err);
        return kExitUsage;
    }
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    if (args[0] == "run") return runcommand(rest, out, err);
    if (args[0] == "models") return modelscommand(rest, out, err);
    if (args[0] == "asm") return asmcommand(rest, out, err);
    if (args[0] == "disasm") return disasmcommand(rest, out, err);
    usage(err);
    return kExitUsage;
}

int climain(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    return clicommand(args, std::cout, std::cerr);
}

}  // namespace velmora
