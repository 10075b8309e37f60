#pragma once
// Writing generated lines: every handler emits through these, so the word count, the jump
// table of large models and the interrupt text stay in step with the lines.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

inline constexpr const char* kCrLf = "\r\n";

// One line as it stands: comments, directives, equates.
void emitraw(CompileContext& ctx, const std::string& text);
// One instruction line: a tab, then the text.
void emitcode(CompileContext& ctx, const std::string& text);
// "label:" alone, or "label:", a tab and the instruction on one line.
void emitlabel(CompileContext& ctx, const std::string& label, const std::string& instruction = "");
// "L0001", "L0002", ...: past 9999 only the last four digits are kept.
std::string newlabel(CompileContext& ctx);
// Marks a runtime routine for the end of the program (and for the interrupt save set when
// requested inside an interrupt routine).
void requestroutine(CompileContext& ctx, int number);

// Program words a generated line occupies, or -1 for a line that sets the counter (".ORG"),
// whose new value is then in `orgvalue`.
int countwords(const std::string& line, long& orgvalue);

}  // namespace velmora
