#pragma once
// What `run` and `disasm` accept as a program: an Intel HEX file, a source that is first
// translated into one in a temporary folder, or a text file of hexadecimal words.

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"
#include "debug/sourcemap.h"
#include "debug/watchvariables.h"
#include "image/elfreader.h"

namespace velmora {

// Translates `source` for the machine's model (and clock) into an Intel HEX file inside
// `folder` and returns its path; nothing after saying on `err` why not (errors naming `source`).
// A source that sets the clock (BASIC's CLOCK_FREQUENCY) sets the machine's.
using HexBuilder = std::optional<std::filesystem::path> (*)(const std::string& source,
                                                            const std::filesystem::path& folder, Machine& m,
                                                            std::ostream& err);

struct SourceKind {
    const char* extension;  // with the dot, compared in any case
    HexBuilder build;
};

// Assembler source, assembled as `velmora-cli asm` does; the error rows and report go to `err`.
std::optional<std::filesystem::path> assembletohex(const std::string& source, const std::filesystem::path& folder,
                                                   Machine& m, std::ostream& err);

// BASIC source, compiled and assembled as `velmora-cli basic --assemble` does, for the clock
// the run uses; the compile error and any assembly errors go to `err`.
std::optional<std::filesystem::path> compiletohex(const std::string& source, const std::filesystem::path& folder,
                                                  Machine& m, std::ostream& err);

// The sources `run` translates before it runs them: one row per kind.
inline constexpr SourceKind kSourceKinds[] = {
    {".asm", assembletohex},
    {".bas", compiletohex},
};

// What a program brings beside its code: a program compiled from BASIC (a .bas, or a .hex
// with its BASIC source, code and listing beside it) its lines and variables, an ELF file the
// names of its functions and objects. Each stays empty for other programs.
struct ProgramCompanions {
    SourceMap lines;                   // address -> BASIC line
    std::vector<WatchEntry> variables; // the declared variables
    std::vector<ElfSymbol> symbols;
};

// Loads `path` into the machine's program memory by its kind: ".hex" as Load Program does
// (messages through `messenger`), a source kind through its builder and a temporary folder,
// anything else as a word file. False after saying why; memory is left clean then. With
// `companions`, what the program brings goes there.
bool loadprogramfile(Machine& m, const std::string& path, Messenger& messenger, std::ostream& err,
                     ProgramCompanions* companions = nullptr);

// Reads whitespace-separated hexadecimal words; ';' starts a comment. Nothing on error.
std::optional<std::vector<uint16_t>> parsewordfile(const std::string& text, std::string& error);

}  // namespace velmora
