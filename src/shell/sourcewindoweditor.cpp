#include "shell/sourcewindoweditor.h"

#include <algorithm>
#include <cctype>

namespace velmora {

namespace {
char folded(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
}  // namespace

void SourceEditorState::clear() {
    text.clear();
    marks.clear();
    caret = 0;
    selection = 0;
}

bool SourceEditorState::isempty() const {
    return std::all_of(text.begin(), text.end(), [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
}

int SourceEditorState::linecount() const { return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

int SourceEditorState::caretline() const {
    const size_t end = std::min(caret, text.size());
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

void SourceEditorState::gotoline(int line) {
    caret = editorlineoffset(text, std::clamp(line, 1, linecount()));
    selection = 0;
}

void SourceEditorState::gotoend() {
    caret = text.size();
    selection = 0;
}

void SourceEditorState::mark(int line) {
    const auto place = std::lower_bound(marks.begin(), marks.end(), line);
    if (place == marks.end() || *place != line) marks.insert(place, line);
}

int SourceEditorState::gotonextmark() {
    if (marks.empty()) return 0;
    const auto next = std::upper_bound(marks.begin(), marks.end(), caretline());
    const int line = next == marks.end() ? marks.front() : *next;
    gotoline(line);
    return line;
}

size_t editorlineoffset(const std::string& text, int line) {
    size_t offset = 0;
    for (int n = 1; n < line; ++n) {
        const size_t end = text.find('\n', offset);
        if (end == std::string::npos) return text.size();
        offset = end + 1;
    }
    return offset;
}

size_t editorfindtext(const std::string& text, const std::string& what, size_t from) {
    if (what.empty() || from > text.size()) return std::string::npos;
    const auto same = [](char a, char b) { return folded(a) == folded(b); };
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), what.begin(),
                                   what.end(), same);
    return found == text.end() ? std::string::npos : static_cast<size_t>(found - text.begin());
}

int editorreplaceall(std::string& text, const std::string& what, const std::string& with) {
    int count = 0;
    size_t from = 0;
    for (size_t at = editorfindtext(text, what, from); at != std::string::npos; at = editorfindtext(text, what, from)) {
        text.replace(at, what.size(), with);
        from = at + with.size();
        ++count;
    }
    return count;
}

std::string editorformattext(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    size_t start = 0;
    while (true) {
        const size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        const size_t last = line.find_last_not_of(" \t\r");
        result += last == std::string::npos ? std::string() : line.substr(0, last + 1);
        if (end == std::string::npos) break;
        result += '\n';
        start = end + 1;
    }
    return result;
}

}  // namespace velmora
