#include <optional>
#include <ostream>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/session.h"
#include "disassembler/disasmlisting.h"

namespace velmora {

namespace {

constexpr CommandText kDisasm = {
    "disasm", "[--model NAME] [--layout normal|noopcodes|plain] FILE.hex|FILE.elf",
    "Loads a HEX or ELF file as Load Program does and prints the listing the Disassembler\n"
    "window shows: with opcodes and invented labels (normal), without opcodes, so that it\n"
    "assembles again (noopcodes), or one row per word without labels (plain). The functions\n"
    "of an ELF file label their words by their names.\n"
    "options:\n"
    "  --model NAME    microcontroller model ('velmora-cli models' lists them)\n"
    "  --layout NAME   normal (default), noopcodes or plain\n"
    "  --help          this text\n"};

std::optional<ListingLayout> layoutnamed(const std::string& name) {
    if (name == "normal") return ListingLayout::Normal;
    if (name == "noopcodes") return ListingLayout::WithoutOpcodes;
    if (name == "plain") return ListingLayout::Plain;
    return std::nullopt;
}

}  // namespace

int disasmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(args, {"--model", "--layout"}, {});
    if (parsed.help) {
        printhelp(kDisasm, out);
        return 0;
    }
    if (!parsed.error.empty()) return usageerror(kDisasm, parsed.error, err);
    if (parsed.positional.size() != 1)
        return usageerror(kDisasm, parsed.positional.empty() ? "no HEX file given" : "more than one file given", err);
    const std::optional<ListingLayout> layout = layoutnamed(parsed.value("--layout").value_or("normal"));
    if (!layout) return usageerror(kDisasm, "unknown layout '" + *parsed.value("--layout") + "'", err);
    CliSession session(err);
    if (!session.selectmodel(parsed.value("--model"))) return kExitInputError;
    if (!session.loadprogram(parsed.positional[0])) return kExitInputError;
    ProgramNames names;
    for (const ElfSymbol& symbol : session.symbols())
        if (symbol.kind == ElfSymbol::Kind::Function) names.emplace_back(symbol.address / 2, symbol.name);
    out << disasmfile(session.machine(), *layout, names);
    return 0;
}

}  // namespace velmora
