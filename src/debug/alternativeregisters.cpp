#include "debug/alternativeregisters.h"

#include <algorithm>

#include "core/hextext.h"
#include "core/textcase.h"
#include "debug/memorytext.h"

namespace velmora {

const char* const kAlternativeHelpText =
    "If the window is resized horizontally long enough then the registers will be displayed in two columns.\n"
    "Unused registers can be removed from the list by a double-click on the appropriate line on the list.\n"
    "Multiple registers can be removed by selecting a range of the lines on the list with the mouse\n"
    "and then pressing Delete or Backspace keys on the keyboard (a line will be removed\n"
    "even if it is only partly selected).\n"
    "The list of removed registers will be remembered for future sessions.\n"
    "Original list can be restored by pressing F12.";

void AlternativeRegisters::open() {
    const size_t count = m_.namedregisters.size();
    const std::string model = lowercase(m_.modelname);
    const std::string digits = settings_.getsetting(kAlternativeSfrList1, "") + settings_.getsetting(kAlternativeSfrList2, "");
    const bool valid = settings_.getsetting(kAlternativeSfrModel, "") == model && digits.size() == count &&
                       std::all_of(digits.begin(), digits.end(), [](char c) { return c == '0' || c == '1'; });
    hidden_.assign(count, 0);
    if (valid) {
        for (size_t i = 0; i < count; ++i) hidden_[i] = digits[i] == '1';
        return;
    }
    store();
}

void AlternativeRegisters::store() {
    std::string digits;
    for (char flag : hidden_) digits += flag ? '1' : '0';
    // One settings value holds a limited length: the string goes in two halves.
    settings_.putsetting(kAlternativeSfrModel, lowercase(m_.modelname));
    settings_.putsetting(kAlternativeSfrList1, digits.substr(0, digits.size() / 2));
    settings_.putsetting(kAlternativeSfrList2, digits.substr(digits.size() / 2));
}

std::string AlternativeRegisters::rowtext(int tableindex) const {
    const NamedRegister& r = m_.namedregisters[static_cast<size_t>(tableindex)];
    if (r.address >= kHwStackPseudoAddress) {
        const int level = r.address - kHwStackPseudoAddress;
        const int32_t value = level < 3 ? m_.hwstack[static_cast<size_t>(level)] : 0;
        return r.text + "\t" + cprefixhex(static_cast<uint32_t>(value), 3) + "\t";
    }
    const uint8_t value = r.address >= 0 && r.address < m_.dataspacesize ? m_.datamem[static_cast<size_t>(r.address)] : 0;
    return r.name + "\t" + cprefixhex(value, 2) + "\t" + binarydigits(value, 8);
}

std::vector<int> AlternativeRegisters::shownindices() const {
    std::vector<int> shown;
    const size_t count = std::min(hidden_.size(), m_.namedregisters.size());
    for (size_t i = 0; i < count; ++i)
        if (!hidden_[i]) shown.push_back(static_cast<int>(i));
    return shown;
}

std::vector<std::string> AlternativeRegisters::rows() const {
    std::vector<std::string> rows;
    for (int index : shownindices()) rows.push_back(rowtext(index));
    return rows;
}

void AlternativeRegisters::setpointer(int first) { pointer_ = std::max(0, first); }

int AlternativeRegisters::pointermax(bool twocolumns, int visiblelines) const {
    const int count = static_cast<int>(shownindices().size());
    const int longest = twocolumns ? (count + 1) / 2 : count;
    return std::max(0, longest - std::max(1, visiblelines));
}

std::vector<int> AlternativeRegisters::column(int which, bool twocolumns) const {
    const std::vector<int> shown = shownindices();
    const int count = static_cast<int>(shown.size());
    const int half = twocolumns ? (count + 1) / 2 : count;
    const int begin = (which == 0 ? 0 : half) + pointer_;
    const int end = which == 0 ? half : (twocolumns ? count : 0);
    if (begin >= end) return {};
    return {shown.begin() + begin, shown.begin() + end};
}

std::string AlternativeRegisters::columntext(int which, bool twocolumns) const {
    std::string text;
    for (int index : column(which, twocolumns)) {
        if (!text.empty()) text += '\n';
        text += rowtext(index);
    }
    return text;
}

void AlternativeRegisters::removeshown(int which, bool twocolumns, int firstline, int lastline) {
    const std::vector<int> rows = column(which, twocolumns);
    firstline = std::max(0, firstline);
    lastline = std::min(lastline, static_cast<int>(rows.size()) - 1);
    if (firstline > lastline) return;
    for (int line = firstline; line <= lastline; ++line) hidden_[static_cast<size_t>(rows[static_cast<size_t>(line)])] = 1;
    store();
}

void AlternativeRegisters::removeline(int which, bool twocolumns, int line) { removeshown(which, twocolumns, line, line); }

void AlternativeRegisters::removeselection(int which, bool twocolumns, const std::string& text, int start, int end) {
    if (start > end) std::swap(start, end);
    start = std::clamp(start, 0, static_cast<int>(text.size()));
    end = std::clamp(end, 0, static_cast<int>(text.size()));
    const auto linesbefore = [&text](int at) {
        return static_cast<int>(std::count(text.begin(), text.begin() + at, '\n'));
    };
    removeshown(which, twocolumns, linesbefore(start), linesbefore(end));
}

void AlternativeRegisters::restore() {
    for (const char* name : {kAlternativeSfrModel, kAlternativeSfrList1, kAlternativeSfrList2}) settings_.putsetting(name, "");
    hidden_.assign(m_.namedregisters.size(), 0);
    pointer_ = 0;
    store();
}

}  // namespace velmora
