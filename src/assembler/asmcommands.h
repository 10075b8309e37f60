#pragma once
// Pieces of the Assembler window's commands that are not drawing: file name rules, the
// output clean-up around a run, the failure message and Go To Next Error's look-up.

#include <string>

#include "assembler/asmcontext.h"

namespace velmora {

inline constexpr const char* kAsmUntitledCaption = "Assembler - UNTITLED";
inline constexpr const char* kAsmCaptionPrefix = "Assembler - ";
inline constexpr const char* kAsmExtensionRefused = "This extension is not allowed for assembler source files.";
inline constexpr const char* kAsmEditorEmpty = "The editor is empty.";

// False for names ending in ".hex", ".obj" or ".lst" in any case: outputs are no sources.
bool asmsourceallowed(const std::string& filename);

// Save As: the name up to its first "." with ".asm" behind it.
std::string asmsaveasname(const std::string& filename);

// The window caption for a file, and the file name taken back from a caption.
std::string asmcaption(const std::string& fullname);
std::string asmfileofcaption(const std::string& caption);

// "<folder>/<base><extension>": where the listing (".lst") and the HEX file (".hex") of a
// source go; Assemble & Load reads the latter.
std::string asmoutputpath(const std::string& folder, const std::string& filename, const std::string& extension);

// Deletes "<base>.lst" and "<base>.hex" in `folder` when they exist.
void asmdeleteoutputs(const std::string& folder, const std::string& filename);

// "Assembly was not successful." and the error count, shown after a run with errors.
std::string asmfailuremessage(int errors);

// The listing row of the error on a source line, or 0 when the line has none.
int asmerrorlistline(const AsmContext& ctx, int sourceline);

}  // namespace velmora
