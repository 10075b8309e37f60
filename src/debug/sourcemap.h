#pragma once
// Which BASIC line a program address belongs to, rebuilt at every load from the listing of
// a program the BASIC compiler made: the compiler leaves each BASIC line as the comment
// "; N: text" in the generated code, and the listing gives the address each comment stands at.

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct SourceMap {
    std::vector<int> addresses;  // word addresses, strictly ascending
    std::vector<int> lines;      // the BASIC line at each address

    bool empty() const { return addresses.empty(); }
    // The line that starts exactly at `address`, or 0.
    int lineat(int address) const;
};

// The map of a listing's rows. Line comments are looked for in order, "; 1:" first; lines
// without code share the address of the next line with code, and the later line wins.
SourceMap sourcemapfromlisting(std::string_view listing);

// The BASIC source of a loaded "X.hex" when X.bas, X.asm and X.lst stand beside it; "" otherwise.
std::string basicsourcebeside(const std::string& programpath);
// The text of that program's listing, X.lst; empty when the program is not one compiled from BASIC.
std::string basiclistingbeside(const std::string& programpath);

// The map for a loaded program: empty unless its BASIC source, generated code and listing exist.
SourceMap loadbasicstepbystep(const std::string& programpath);

}  // namespace velmora
