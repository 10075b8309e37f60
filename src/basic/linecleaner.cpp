#include "basic/linecleaner.h"

#include "core/textcase.h"

namespace velmora {

KeywordSpelling::KeywordSpelling(const std::vector<std::string>& words) {
    for (const std::string& word : words) byupper_.emplace(uppercase(word), word);  // the first spelling wins
}

const std::string* KeywordSpelling::find(std::string_view word) const {
    const auto it = byupper_.find(uppercase(word));
    return it == byupper_.end() ? nullptr : &it->second;
}

namespace {

bool wordchar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool blank(char c) { return c == ' ' || c == '\t'; }

void trimtail(std::string& out) {
    while (!out.empty() && out.back() == ' ') out.pop_back();
}

// A minus is a sign, not an operator, where no operand stands before it: at the start, behind
// an operator, a bracket or a comma, and behind Step ("Step -2").
bool signposition(const std::string& out) {
    std::string_view before = out;
    while (!before.empty() && before.back() == ' ') before.remove_suffix(1);
    if (before.empty()) return true;
    if (std::string_view("=+-*/<>(,").find(before.back()) != std::string_view::npos) return true;
    return before.ends_with(" Step") || before == "Step";
}

// Runs of blanks and tabs outside strings become one blank; comments stay as typed.
std::string foldblanks(std::string_view text) {
    std::string out;
    bool instring = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (!instring && c == '\'') {
            out.append(text.substr(i));
            break;
        }
        if (c == '"') instring = !instring;
        if (!instring && blank(c)) {
            if (out.empty() || out.back() != ' ') out += ' ';
            continue;
        }
        out += c;
    }
    return out;
}

std::string trimmed(std::string text) {
    trimtail(text);
    size_t start = 0;
    while (start < text.size() && text[start] == ' ') ++start;
    return text.substr(start);
}

// Where "ASM:" begins a row, behind an optional line label; npos for other rows.
size_t asmmarker(std::string_view row) {
    size_t at = 0;
    while (at < row.size() && blank(row[at])) ++at;
    if (row.size() - at >= 4 && sameignoringcase(row.substr(at, 4), "ASM:")) return at;
    size_t end = at;
    while (end < row.size() && wordchar(row[end])) ++end;
    if (end == at || end >= row.size() || row[end] != ':') return std::string_view::npos;
    at = end + 1;
    while (at < row.size() && blank(row[at])) ++at;
    return row.size() - at >= 4 && sameignoringcase(row.substr(at, 4), "ASM:") ? at : std::string_view::npos;
}

}  // namespace

std::string cleanbasicline(std::string_view row, const KeywordSpelling& keywords) {
    const size_t asmat = asmmarker(row);
    if (asmat != std::string_view::npos)
        return cleanbasicline(row.substr(0, asmat), keywords) + (asmat > 0 ? " " : "") +
               trimmed("ASM:" + foldblanks(row.substr(asmat + 4)));

    std::string out;
    bool instring = false;
    for (size_t i = 0; i < row.size(); ++i) {
        const char c = row[i];
        if (instring) {
            out += c;
            instring = c != '"';
            continue;
        }
        if (c == '"') {
            out += c;
            instring = true;
        } else if (c == '\'') {
            out.append(row.substr(i));
            break;
        } else if (blank(c)) {
            if (!out.empty() && out.back() != ' ') out += ' ';
        } else if (c == ',') {
            trimtail(out);
            out += ", ";
        } else if (std::string_view("=+-*/<>").find(c) != std::string_view::npos) {
            std::string op(1, c);
            if (i + 1 < row.size() && ((c == '<' && (row[i + 1] == '=' || row[i + 1] == '>')) ||
                                       (c == '>' && row[i + 1] == '=')))
                op += row[++i];
            const bool sign = op == "-" && signposition(out);
            trimtail(out);
            if (!out.empty() && out.back() != '(') out += ' ';
            out += op;
            if (!sign) out += ' ';
        } else if (wordchar(c) || c == '$') {
            size_t end = i + 1;
            while (end < row.size() && wordchar(row[end])) ++end;
            const std::string_view word = row.substr(i, end - i);
            if (const std::string* spelling = keywords.find(word))
                out += *spelling;
            else if (c == '$' || (c >= '0' && c <= '9'))
                out += word;  // a number keeps its notation
            else
                out += lowercase(word);
            i = end - 1;
        } else {
            out += c;
        }
    }
    return trimmed(out);
}

}  // namespace velmora
