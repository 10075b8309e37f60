#pragma once
// Following a compiled BASIC program in its source: the address-to-line map of the loaded
// program, the BASIC Compiler window's mark on the line that runs, and Run To Next BASIC
// Statement. Each part hooks into the step only while it has something to do, so a run with
// tracking off stays in the quiet loop.

#include <string>

#include "core/runcontrol.h"
#include "debug/sourcemap.h"
#include "shell/shelloptions.h"

namespace velmora {

// The window that shows the mark: the BASIC Compiler window while it is open.
class TrackingWindow {
public:
    virtual ~TrackingWindow() = default;
    virtual std::string trackingcaption() const = 0;
    // Marks the line (0: no line) and brings it into view.
    virtual void markline(int line) = 0;
};

class BasicTracking {
public:
    BasicTracking(RunControl& run, const ShellOptions& options);
    ~BasicTracking();
    BasicTracking(const BasicTracking&) = delete;
    BasicTracking& operator=(const BasicTracking&) = delete;

    // The BASIC Compiler window opens (its model) and closes (null).
    void setwindow(TrackingWindow* window);
    // A program was loaded (or cleared: ""): the map is built afresh, and tracking becomes
    // active when the open BASIC Compiler window holds the program's source.
    void programloaded(const std::string& programpath);
    // Start: the request is dropped; the mark is cleared, or tracking ends.
    void started();
    // Run To Next BASIC Statement: runs Extremely Fast until the PC reaches a statement.
    void runtonext();

    const SourceMap& map() const { return map_; }
    bool active() const { return active_; }

private:
    bool tracking() const;
    void hooktracking();
    void unhook(int& id);

    RunControl& run_;
    const ShellOptions& options_;
    TrackingWindow* window_ = nullptr;
    SourceMap map_;
    bool active_ = false;
    int runhook_ = 0;
    int trackhook_ = 0;
};

}  // namespace velmora
