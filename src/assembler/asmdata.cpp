#include "assembler/asmdata.h"

#include <vector>

#include "assembler/asmencoder.h"
#include "assembler/asmexpression.h"
#include "assembler/asmmessages.h"
#include "assembler/asmtext.h"
#include "core/hextext.h"

namespace velmora {

namespace {

std::vector<std::string> splitatcommas(std::string_view list) {
    std::vector<std::string> parts;
    size_t start = 0;
    for (;;) {
        const size_t comma = list.find(',', start);
        parts.push_back(asmtrim(list.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start)));
        if (comma == std::string_view::npos) return parts;
        start = comma + 1;
    }
}

bool isquotedtext(std::string_view element) {
    if (element.size() < 4) return false;
    return (element.front() == '"' && element.back() == '"') || (element.front() == '\'' && element.back() == '\'');
}

// Every occurrence of `from` replaced with `to`.
std::string replaceall(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    size_t start = 0;
    for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, start)) {
        result.append(text.substr(start, at - start)).append(to);
        start = at + from.size();
    }
    return result.append(text.substr(start));
}

// Walks `count` elements of the list. With `quotedcomma` an element that starts with ','
// or "," is the comma character itself, whatever follows it.
std::vector<std::string> dataelements(std::string_view list, int count, bool quotedcomma) {
    std::vector<std::string> elements;
    std::string rest(list);
    for (int i = 0; i < count; ++i) {
        rest = asmtrim(rest);
        const bool last = i == count - 1;
        if (quotedcomma && (rest.starts_with("','") || rest.starts_with("\",\""))) {
            elements.push_back("','");
            rest = asmtrim(rest.substr(3));
            if (rest.starts_with(',')) rest.erase(0, 1);
        } else if (const size_t comma = rest.find(','); !last && comma != std::string::npos) {
            elements.push_back(asmtrim(rest.substr(0, comma)));
            rest.erase(0, comma + 1);
        } else {
            elements.push_back(asmtrim(rest));
            rest.clear();
        }
    }
    return elements;
}

struct DataKind {
    bool quotedcomma;
    int32_t maximum;
    int bytes;
    const char* message;
};

constexpr DataKind kBytes{true, 255, 1, asmmessage::kDbArgument};
constexpr DataKind kWords{false, 65535, 2, asmmessage::kDwArgument};

std::string encodedata(AsmContext& ctx, std::string_view list, AsmLine& line, const DataKind& kind) {
    const int count = asmcountitems(list);
    if (count == 0) {
        asmerror(ctx, line, kind.message);
        return {};
    }
    std::string opcode;
    for (const std::string& element : dataelements(list, count, kind.quotedcomma)) {
        const int32_t value = asmevalexpr(ctx, element);
        if (value < 0 || value > kind.maximum) {
            asmerror(ctx, line, kind.message);
            return {};
        }
        if (kind.bytes == 1)
            opcode += hex2(static_cast<uint32_t>(value));
        else
            asmappendword(opcode, static_cast<uint16_t>(value));
    }
    if (opcode.size() % 4 != 0) opcode += "00";
    return opcode;
}

}  // namespace

std::string asmexpandstrings(std::string_view list) {
    std::vector<std::string> elements;
    bool expandedany = false;
    for (const std::string& element : splitatcommas(list)) {
        if (!isquotedtext(element)) {
            elements.push_back(element);
            continue;
        }
        expandedany = true;
        for (char c : std::string_view(element).substr(1, element.size() - 2))
            elements.push_back(std::string{'\'', c, '\''});
    }
    // A list without strings stays as written, so that its ',' literal survives. An expanded
    // list is joined with ", ": joined with a bare comma, the neighbours 'A','B' would read
    // as the comma literal when the elements are counted.
    if (!expandedany) return std::string(list);
    std::string expanded;
    for (const std::string& element : elements) {
        if (!expanded.empty()) expanded += ", ";
        expanded += element;
    }
    return expanded;
}

int asmcountitems(std::string_view list) {
    const std::string copy = replaceall(replaceall(list, "\",\"", "@"), "','", "@");
    int count = 1;
    for (char c : copy)
        if (c == ',') ++count;
    return count > kAsmMaxDataItems ? 0 : count;
}

std::string asmencodedb(AsmContext& ctx, std::string_view list, AsmLine& line) {
    return encodedata(ctx, list, line, kBytes);
}

std::string asmencodedw(AsmContext& ctx, std::string_view list, AsmLine& line) {
    return encodedata(ctx, list, line, kWords);
}

}  // namespace velmora
