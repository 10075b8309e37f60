#include "shell/basictracking.h"

#include <filesystem>

#include "core/textcase.h"
#include "shell/settingnames.h"

namespace velmora {

BasicTracking::BasicTracking(RunControl& run, const ShellOptions& options) : run_(run), options_(options) {}

BasicTracking::~BasicTracking() {
    unhook(runhook_);
    unhook(trackhook_);
}

void BasicTracking::unhook(int& id) {
    if (id != 0) run_.removehook(id);
    id = 0;
}

void BasicTracking::setwindow(TrackingWindow* window) { window_ = window; }

bool BasicTracking::tracking() const { return options_.on(settingnames::kBasicProgramTracking); }

void BasicTracking::programloaded(const std::string& programpath) {
    map_ = loadbasicstepbystep(programpath);
    run_.hassourcelines = !map_.empty();
    active_ = false;
    if (window_ && !map_.empty()) {
        // The window's caption ends in the name of the source beside the program, X.bas.
        const std::string name = lowercase(std::filesystem::path(programpath).stem().string() + ".bas");
        const std::string caption = lowercase(window_->trackingcaption());
        active_ = caption.size() >= name.size() && caption.compare(caption.size() - name.size(), name.size(), name) == 0;
    }
    if (active_) hooktracking();
}

void BasicTracking::hooktracking() {
    if (trackhook_ != 0) return;
    // Tracking that is switched off, or a window that went, ends it until the next load.
    trackhook_ = run_.addhook(HookSlot::SourceTracking, 0, [this](RunControl& run) {
        if (tracking() && window_ && active_) {
            if (const int line = map_.lineat(run.machine().pc)) window_->markline(line);
            return;
        }
        active_ = false;
        unhook(trackhook_);
    });
}

void BasicTracking::started() {
    if (tracking() && window_ && active_)
        window_->markline(0);
    else
        active_ = false;
}

void BasicTracking::runtonext() {
    run_.runtostatementrequest = true;
    if (runhook_ == 0)
        runhook_ = run_.addhook(HookSlot::RunToStatement, 0, [this](RunControl& run) {
            if (run.runtostatementrequest && map_.lineat(run.machine().pc) == 0) return;
            if (run.runtostatementrequest) {
                run.runtostatementrequest = false;
                run.menuspeed(kRateStep);
            }
            unhook(runhook_);
        });
    run_.menuspeed(5);
}

}  // namespace velmora
