#pragma once
// Run control: one simulated step in its fixed order, the run loop at six rates,
// Start/Step/Stop and the statistics. GUI-free: the windows drive it through the
// menu functions and observe it through hooks.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

// Rates 1..6: Step By Step, Slow, Normal, Fast, Extremely Fast, Ultimate.
inline constexpr int kRateStep = 1, kRateUltimate = 6;
inline constexpr int kRateNaps[7] = {0, 0, 140, 24, 5, 0, 0};
extern const char* const kRateCaptions[7];

// Phases that peripherals fill in; a null phase costs one test.
struct PeripheralPhases {
    void (*externalinterrupts)(Machine&) = nullptr;
    void (*adcstep)(Machine&) = nullptr;
    void (*comparatorstep)(Machine&) = nullptr;
    void (*uartstep)(Machine&) = nullptr;
    void (*eepromstep)(Machine&) = nullptr;
    void (*portstep)(Machine&) = nullptr;
    // True while the phases must run although nothing woke them; without it they always run.
    bool (*busy)(const Machine&) = nullptr;
};

class RunControl;
using StepHook = std::function<void(RunControl&)>;

// Hook slots in the order they run after every step.
enum class HookSlot {
    Window,            // refresh of an open window; `order` sorts them
    Breakpoints,
    SpecialBreakpoints,
    RunToStatement,
    SourceTracking,
    Modules,
};

class RunControl : public MachineEvents {
public:
    RunControl(Machine& machine, Messenger& messenger, Clock& clock, SettingsAccess& settings);
    ~RunControl() override;

    Machine& machine() { return m_; }
    PeripheralPhases phases;

    // Registers a hook; the returned id removes it again.
    int addhook(HookSlot slot, int order, StepHook hook);
    void removehook(int id);

    // Main window refresh ("ekran"), module start, and the Ultimate timer's interval.
    std::function<void()> ekran;
    std::function<void()> objectinit;
    std::function<void(int)> setultimatetimer;
    // Called whenever the enabled state of Start/Stop/Step or the rate changes.
    std::function<void()> commandschanged;
    // The outside world's turn (a terminal, scheduled inputs): after a step in which the
    // machine raised `attention`, or once its cycle count reaches `attentioncycle`.
    std::function<void()> onattention;

    void simulatestep();
    void runloop();

    void menustart();
    void menustep();
    void menustop();
    void menuspeed(int rate);
    void menuresetstatistics();
    // The Ultimate timer's tick.
    void ultimatetick() { ultimaterefresh_ = true; }

    int simulationrate() const { return rate_; }
    bool startenabled() const { return startenabled_; }
    bool stopenabled() const { return stopenabled_; }
    bool stepenabled() const { return stepenabled_; }
    bool runtostatementrequest = false;
    bool hassourcelines = false;  // a BASIC line table is loaded

    // The text shown at Stop.
    std::string lastsummary() const { return summary_; }
    static std::string summarytext(uint64_t instructions, const std::string& elapsed, uint64_t cycles, float mhz);

    // A stack fault: message, then Step By Step.
    void fault(const std::string& text) override;

    // The run loop is running (a run, or a yield inside one).
    bool inloop() const { return inloop_; }
    // Steps executed since the run loop began (for yielding on a time budget).
    uint64_t loopsteps() const { return loopsteps_; }

private:
    struct Hook {
        int id;
        HookSlot slot;
        int order;
        StepHook call;
        bool removed = false;
    };
    void sorthooks();
    void setenabled(bool start, bool stop, bool step);
    // Breakpoint-type work after a step; the common case (no hooks, no BREAK, no breakpoint
    // word) is tested inline. `isbreak`: the step ran BREAK or reached a breakpoint word.
    void afterstephooks(bool isbreak);
    void step();
    void steptail();
    // True when the next steps need nothing but their instructions until one of them changes that.
    bool quiet() const;
    uint32_t quietsteps(uint32_t count);
    // The phases after the instruction; they count down the wake steps once nothing is busy.
    void peripheralphases();
    void yieldtimes(int n);

    Machine& m_;
    Messenger& messenger_;
    Clock& clock_;
    SettingsAccess& settings_;
    int rate_ = 4;
    bool ultimaterefresh_ = false;
    bool startenabled_ = true, stopenabled_ = false, stepenabled_ = false;
    bool inloop_ = false;
    double starttime_ = 0;
    std::string summary_;
    std::vector<Hook> hooks_;
    // A hook may add or remove hooks, its own too: while the hooks run, additions wait here
    // and removals only mark, and both take effect once the last hook of the step has run.
    std::vector<Hook> addedhooks_;
    bool inhooks_ = false;
    bool hooksremoved_ = false;
    int nexthookid_ = 1;
    uint64_t loopsteps_ = 0;
};

}  // namespace velmora
