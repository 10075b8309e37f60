#pragma once
// The whole-program listing in its three layouts. Rows end with CR LF.
//
//   Normal          address, word, label and instruction; second words on a row of their own
//   WithoutOpcodes  label and instruction only, assemblable again; unknown words as .DW
//   Plain           address, word and instruction; no labels

#include <cstdint>
#include <functional>
#include <string>

#include "disassembler/disasminstruction.h"
#include "disassembler/disasmlabels.h"

namespace velmora {

struct Machine;

enum class ListingLayout { Normal, WithoutOpcodes, Plain };

// Called before each word with the pass (1 or 2; the plain layout has only pass 1)
// and the word index, so that a window can show its progress and yield.
using ListingProgress = std::function<void(int pass, int wordindex)>;

// The text of the word at a listing position: the instruction, or with the setting
// "Listing Without Opcodes" on, an unknown word as ".DW $XXXX ;UNRECOGNIZED".
std::string disasmword(Disassembler& disassembler, uint16_t word, uint16_t nextword, bool withoutopcodes);

// The listing over the machine's program (`programbytes` / 2 words). With `plain` the
// plain layout, else the layout the setting "Listing Without Opcodes" (`withoutopcodes`)
// selects; the setting also decides how unknown words read in every layout.
std::string disasmlisting(const Machine& m, bool plain, bool withoutopcodes, const ListingProgress& progress = {});

// The listing in the given layout, for front ends that name the layout directly; `names`
// label the words the program named.
std::string disasmfile(const Machine& m, ListingLayout layout, const ProgramNames& names = {});

// Progress texts of a listing run.
std::string progresspasstext(int pass);       // "Performing pass 1."
std::string progresslinetext(int wordindex);  // "Line " and the index plus 1

}  // namespace velmora
