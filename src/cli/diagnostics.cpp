#include "cli/diagnostics.h"

#include "basic/basicbuild.h"

#include <ostream>
#include <sstream>

namespace velmora {

void printgnuerrors(const std::string& file, const std::vector<SourceError>& errors, std::ostream& err) {
    for (const SourceError& e : errors) err << file << ":" << e.line << ": error: " << e.text << "\n";
}

void printbasicerrors(const std::string& source, const BasicBuildResult& result, const std::string& rows,
                      std::ostream& err) {
    const std::string& box = result.compile.error;
    const size_t colon = box.find(": ");
    if (result.compile.errorline > 0 && box.starts_with("Error in line ") && colon != std::string::npos) {
        std::string text = box.substr(colon + 2);
        for (char& c : text)
            if (c == '\n') c = ' ';
        printgnuerrors(source, {{result.compile.errorline, text}}, err);
    }
    printgnuerrors(result.asmpath, errorsofrows(rows), err);
}

std::vector<SourceError> errorsofrows(const std::string& rows) {
    static constexpr char kMarker[] = " Error: ";
    std::vector<SourceError> errors;
    std::istringstream lines(rows);
    for (std::string row; std::getline(lines, row);) {
        if (!row.empty() && row.back() == '\r') row.pop_back();
        const size_t marker = row.find(kMarker);
        if (marker == 0 || marker > 9) continue;  // a line number of one to nine digits
        if (row.find_first_not_of("0123456789") != marker) continue;
        errors.push_back({std::stoi(row.substr(0, marker)), row.substr(marker + sizeof kMarker - 1)});
    }
    return errors;
}

}  // namespace velmora
