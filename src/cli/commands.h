#pragma once
// velmora-cli: the headless front end. Each sub-command is a thin wrapper over the
// same library functions the desktop program uses.

#include <iosfwd>
#include <string>
#include <vector>

namespace velmora {

// Exit codes of `run`, by the reason the simulation ended; 2 and 3 for every command.
enum RunExit {
    kExitSleep = 0,
    kExitUsage = 2,
    kExitInputError = 3,
    kExitUnrecognized = 4,
    kExitEndOfMemory = 5,
    kExitInfiniteLoop = 6,
    kExitLimit = 7,
    kExitBreakpoint = 8,
    kExitStepByStep = 9,
};

int climain(int argc, char** argv);
int clicommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The sub-commands, each given the arguments after its name.
int runcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int modelscommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int disasmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// `asm`: assembles a source file into its listing and HEX file; exit 3 when it has errors.
int asmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// `basic`: compiles a BASIC source into its .asm (and with --assemble its listing and HEX file).
int basiccommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace velmora
