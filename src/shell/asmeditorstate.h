#pragma once
// The Assembler window's names for the source editor state that both source windows share.

#include "shell/sourcewindoweditor.h"

namespace velmora {

using AsmEditorState = SourceEditorState;

inline size_t asmlineoffset(const std::string& text, int line) { return editorlineoffset(text, line); }
inline size_t asmfindtext(const std::string& text, const std::string& what, size_t from) {
    return editorfindtext(text, what, from);
}
inline int asmreplaceall(std::string& text, const std::string& what, const std::string& with) {
    return editorreplaceall(text, what, with);
}

}  // namespace velmora
