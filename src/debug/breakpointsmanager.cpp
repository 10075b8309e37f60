#include "debug/breakpointsmanager.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/hextext.h"
#include "disassembler/disasmlisting.h"

namespace velmora {

namespace {

std::string tabstoblanks(std::string text) {
    for (size_t at; (at = text.find('\t')) != std::string::npos;) text.replace(at, 1, "    ");
    return text;
}

std::vector<std::string> splitrows(const std::string& text) {
    std::vector<std::string> rows;
    std::istringstream in(text);
    for (std::string row; std::getline(in, row);) {
        if (!row.empty() && row.back() == '\r') row.pop_back();
        rows.push_back(row);
    }
    return rows;
}

bool ishexword(const std::string& text) {
    return text.size() == 4 &&
           std::all_of(text.begin(), text.end(), [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); });
}

// A row of the assembler's listing begins with the line number and blanks, which go, so
// that a row with code begins with its address; a row without code loses its address.
std::string listingrow(std::string row) {
    if (row.size() >= 8 && row.substr(4, 4) == "    ") row.erase(0, 8);
    if (rowaddress(row) && !ishexword(row.size() >= 12 ? row.substr(8, 4) : "")) row.replace(0, 6, "      ");
    return tabstoblanks(row);
}

}  // namespace

BreakpointsManager::BreakpointsManager(Machine& m, BreakpointList& list, Questions& questions, Messenger& messenger,
                                       SettingsAccess& settings)
    : m_(m), list_(list), questions_(questions), settings_(settings), messenger_(messenger) {
    holdpcinfocus_ = settings_.getsetting(kHoldPcInFocus, "1") == "1";
}

void BreakpointsManager::load(const std::string& programpath) {
    lines_.clear();
    scroll_ = 0;
    std::vector<std::string> listing;
    if (programpath.size() >= 4) {
        const std::string name = programpath.substr(0, programpath.size() - 4) + ".lst";
        std::error_code error;
        if (std::filesystem::is_regular_file(name, error) &&
            questions_.askyesno("Do you want to use existing listing file " + name + "?")) {
            std::ifstream file(name, std::ios::binary);
            std::ostringstream text;
            text << file.rdbuf();
            listing = splitrows(text.str());
        }
    }
    // Another tool's listing, or anything else, is set aside for the disassembly.
    const bool usable = listing.size() >= 2 && tabstoblanks(listing[0]) == kAssemblerListingRule &&
                        tabstoblanks(listing[1]) == kAssemblerListingTitle;
    if (usable) {
        for (const std::string& row : listing) lines_.push_back(listingrow(row));
    } else {
        for (const std::string& row : splitrows(disasmlisting(m_, true, false))) lines_.push_back(tabstoblanks(row));
    }
    draw();
}

int BreakpointsManager::scrollmax() const {
    return std::max(0, static_cast<int>(lines_.size()) - (kBreakpointRows - 1) - 1);
}

void BreakpointsManager::setscroll(int first) { scroll_ = std::clamp(first, 0, scrollmax()); }

int BreakpointsManager::pcline() const {
    const std::string pc = hex6(static_cast<uint32_t>(m_.pc));
    for (size_t i = 0; i < lines_.size(); ++i)
        if (rowaddress(lines_[i]) == pc) return static_cast<int>(i);
    return -1;
}

void BreakpointsManager::draw() {
    if (!holdpcinfocus_) return;
    const int line = pcline();
    if (line < 0 || (line >= scroll_ && line < scroll_ + kBreakpointRows)) return;
    setscroll(line - 3);
}

std::array<BreakpointRow, kBreakpointRows> BreakpointsManager::rows(int width) const {
    std::array<BreakpointRow, kBreakpointRows> rows;
    const std::string pc = hex6(static_cast<uint32_t>(m_.pc));
    for (int i = 0; i < kBreakpointRows; ++i) {
        const size_t line = static_cast<size_t>(scroll_ + i);
        if (line >= lines_.size()) break;
        BreakpointRow& row = rows[static_cast<size_t>(i)];
        row.text = lines_[line].substr(0, static_cast<size_t>(std::max(width, 0)));
        if (const auto address = rowaddress(lines_[line])) {
            row.breakpoint = list_.contains(*address);
            row.pc = *address == pc;
        }
    }
    return rows;
}

void BreakpointsManager::clickrow(int row) {
    const size_t line = static_cast<size_t>(scroll_ + row);
    if (row < 0 || row >= kBreakpointRows || line >= lines_.size()) return;
    if (list_.toggle(lines_[line]) == BreakpointList::Toggle::Full)
        messenger_.show(kTooManyBreakpoints, MessageKind::Exclamation);
    draw();
}

void BreakpointsManager::clearall() {
    list_.clear();
    draw();
}

void BreakpointsManager::setholdpcinfocus(bool on) {
    holdpcinfocus_ = on;
    settings_.putsetting(kHoldPcInFocus, on ? "1" : "0");
    draw();
}

}  // namespace velmora
