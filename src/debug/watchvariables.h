#pragma once
// The Watch Variables window without its drawing: the variables of the loaded program, read
// straight from the data space. A BASIC program's declarations come from the comments the
// compiler leaves in the listing; variables added by hand are kept in "watch.dat" for the
// most recent program only. Rows are rebuilt on every refresh.

#include <optional>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

// Kind codes: 0 Bit, and for the others their size in bytes.
enum class WatchKind : int32_t { Bit = 0, Byte = 1, Word = 2, Long = 4 };

struct WatchEntry {
    std::string name;
    WatchKind kind = WatchKind::Byte;
    int32_t address = 0;
    int32_t bit = 0;
    bool operator==(const WatchEntry&) const = default;
};

inline constexpr char kWatchHexValues[] = "Watch HEX Values";
inline constexpr char kWatchConfirmDelete[] = "Watch Confirm Delete";
inline constexpr int kWatchVisibleRows = 10;

// The entries a compiled BASIC program declares, from its listing's text.
std::vector<WatchEntry> basicwatchentries(const std::string& listing);
// The same for the program at `programpath` (X.hex) when X.bas, X.asm and X.lst lie beside
// it, as for source tracking; none otherwise.
std::vector<WatchEntry> loadbasicwatch(const std::string& programpath);

// The value of an entry, read with no side effects.
uint32_t watchvalue(const Machine& m, const WatchEntry& entry);

class WatchVariables {
public:
    // `watchfile` is the path of "watch.dat".
    WatchVariables(Machine& m, SettingsAccess& settings, Questions& questions, std::string watchfile);

    // The window's two options, read when it opens.
    void readsettings();

    // After every load (or a clear: ""): the BASIC declarations beside the program, then the
    // hand-added entries stored for this program.
    void programloaded(const std::string& programpath);

    const std::vector<WatchEntry>& entries() const { return list_; }
    const std::vector<WatchEntry>& userentries() const { return user_; }
    bool hasprogram() const { return !program_.empty(); }

    // The rows from the scroll position on, each ending in CR LF.
    std::string text() const;
    std::string row(const WatchEntry& entry) const;
    int scroll() const { return scroll_; }
    void setscroll(int first);
    bool scrollenabled() const { return list_.size() > kWatchVisibleRows; }

    bool hexvalues() const { return hex_; }
    void sethexvalues(bool on);
    bool confirmdelete() const { return confirm_; }
    void setconfirmdelete(bool on);

    // Add New Variable: the message of the first failing check and the field it names
    // (0 name, 1 type, 2 address, 3 bit), or nothing when the entry was added.
    struct Refusal {
        std::string message;
        int field;
    };
    std::optional<Refusal> add(const std::string& name, const std::string& type, const std::string& address,
                               const std::string& bit);
    // Change Variable Value of entry `index`: the message, or nothing when done (or when the
    // fields were both empty or both filled, which clears them: `clearfields` says so).
    std::optional<std::string> change(size_t index, const std::string& decimal, const std::string& hex,
                                      bool& clearfields);
    // Delete mode: a click on a visible row removes its entry (after the question when the
    // confirmation is on).
    void deleterow(int row);

    // The refusal of Add, Change and Delete before their windows open, or nothing.
    std::optional<std::string> addrefusal() const;
    std::optional<std::string> editrefusal() const;

private:
    void loadfile();
    void savefile() const;

    Machine& m_;
    SettingsAccess& settings_;
    Questions& questions_;
    std::string watchfile_;
    std::string program_;  // the file name in lower case, "" with no program
    std::vector<WatchEntry> list_;
    std::vector<WatchEntry> user_;
    int scroll_ = 0;
    bool hex_ = false;
    bool confirm_ = true;
};

}  // namespace velmora
