#pragma once
// The Alternative Registers Viewer: every named register of the model with its value in
// hexadecimal and binary (the hardware stack levels with a three-digit value), less the rows
// the user removed. The removed rows are kept per model in the settings store.

#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

inline constexpr char kAlternativeSfrModel[] = "Alternative SFR Model";
inline constexpr char kAlternativeSfrList1[] = "Alternative SFR List1";
inline constexpr char kAlternativeSfrList2[] = "Alternative SFR List2";
extern const char* const kAlternativeHelpText;

class AlternativeRegisters {
public:
    AlternativeRegisters(const Machine& m, SettingsAccess& settings) : m_(m), settings_(settings) {}

    // Reads the removed rows; a list stored for another model, or with a digit count that is
    // not one per register, starts afresh and is stored so.
    void open();
    // One flag per named register, 0 shown, 1 removed.
    const std::vector<char>& hiddenlist() const { return hidden_; }

    // The rows shown, in the model's register order ("refreshalternative").
    std::vector<std::string> rows() const;
    // The register table index of each shown row.
    std::vector<int> shownindices() const;
    std::string rowtext(int tableindex) const;

    // The scroll control: the first row shown in each column.
    int pointer() const { return pointer_; }
    void setpointer(int first);
    int pointermax(bool twocolumns, int visiblelines) const;
    // Rows of column 0 or 1 from the pointer on. One column holds every row; two columns split
    // them, the first taking the larger half.
    std::vector<int> column(int which, bool twocolumns) const;
    std::string columntext(int which, bool twocolumns) const;

    // Double click on a line of a column.
    void removeline(int which, bool twocolumns, int line);
    // Delete or Backspace on a selection in a column's text: every row touched goes, found by
    // the line breaks before the selection's ends.
    void removeselection(int which, bool twocolumns, const std::string& text, int start, int end);
    // F12: every row back, and the stored lists cleared.
    void restore();

private:
    void removeshown(int which, bool twocolumns, int firstline, int lastline);
    void store();

    const Machine& m_;
    SettingsAccess& settings_;
    std::vector<char> hidden_;
    int pointer_ = 0;
};

}  // namespace velmora
