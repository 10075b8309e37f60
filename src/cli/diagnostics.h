#pragma once
// Errors in the form editors and CI annotate ("FILE:LINE: error: TEXT"), for every
// command that translates a source: the assembler now, the BASIC compiler alike.

#include <iosfwd>
#include <string>
#include <vector>

namespace velmora {

struct BasicBuildResult;

struct SourceError {
    int line = 0;  // from 1
    std::string text;
};

// One "FILE:LINE: error: TEXT" line per error.
void printgnuerrors(const std::string& file, const std::vector<SourceError>& errors, std::ostream& err);

// The compile error of a BASIC build ("Error in line N: TEXT") against the source, and the
// assembler's error rows (`rows`) against the generated file.
void printbasicerrors(const std::string& source, const BasicBuildResult& result, const std::string& rows,
                      std::ostream& err);

// The errors of a report's error rows ("0012 Error: TEXT", one per line); other lines are skipped.
std::vector<SourceError> errorsofrows(const std::string& rows);

}  // namespace velmora
