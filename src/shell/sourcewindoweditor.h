#pragma once
// What the text control of a source window holds, as far as the window's commands care: the
// text, the caret, the marked lines and whether it takes input. Both source windows (BASIC
// Compiler and Assembler) and the Assembler's listing viewer use it; the Qt view copies the
// caret and text in before a command and draws the result afterwards.

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

struct SourceEditorState {
    std::string text;        // lines separated by "\n"
    std::vector<int> marks;  // marked line numbers, from 1, ascending, each once
    size_t caret = 0;        // byte offset into `text`
    size_t selection = 0;    // bytes selected from the caret on
    bool enabled = true;

    // Empties the text and its marks.
    void clear();
    // Blanks and line ends do not count as text.
    bool isempty() const;
    int linecount() const;
    // The line of the caret, from 1.
    int caretline() const;
    // Puts the caret at the start of a line; a number past the end goes to the last line.
    void gotoline(int line);
    void gotoend();
    void mark(int line);
    // The first marked line behind the caret's line, going round to the first mark; 0
    // without marks. The caret moves there.
    int gotonextmark();
};

// The byte offset of the start of a line (from 1) of a text; the text's length past its end.
size_t editorlineoffset(const std::string& text, int line);

// Case-insensitive search for `what` from `from` on; npos when it is not there.
size_t editorfindtext(const std::string& text, const std::string& what, size_t from);

// Replaces every case-insensitive occurrence of `what` with `with`; returns how many.
int editorreplaceall(std::string& text, const std::string& what, const std::string& with);

// Format Text: blanks and tabs at the end of each line go.
std::string editorformattext(const std::string& text);

}  // namespace velmora
