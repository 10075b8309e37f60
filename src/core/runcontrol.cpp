#include "core/runcontrol.h"

#include <algorithm>
#include <cstdio>

#include "core/decode.h"
#include "core/interpreter.h"
#include "core/interrupts.h"
#include "core/observers.h"
#include "core/timetext.h"

namespace velmora {

const char* const kRateCaptions[7] = {"",         "&1 Step By Step",     "&2 Slow",    "&3 Normal",
                                      "&4 Fast", "&5 Extremely Fast", "&6 Ultimate"};

namespace {
// At the two fastest rates the loop yields on wall time, not per step.
constexpr double kYieldBudgetSeconds = 0.015;
constexpr uint32_t kStepsBetweenClockReads = 4096;

// The refresh interval of the Ultimate rate; a hand-edited value its prompt would refuse
// gives the default.
int ultimatetimerms(SettingsAccess& settings) {
    constexpr int32_t kDefault = 500, kLow = 1, kHigh = 2000;
    const int32_t stored = settings.getsettingdword("Ultimate Timer", kDefault);
    return stored >= kLow && stored <= kHigh ? stored : kDefault;
}
}  // namespace

RunControl::RunControl(Machine& machine, Messenger& messenger, Clock& clock, SettingsAccess& settings)
    : m_(machine), messenger_(messenger), clock_(clock), settings_(settings) {
    m_.events = this;
    const int stored = settings_.getsettingdword("Simulation Rate", 4);
    rate_ = (stored >= 1 && stored <= 6) ? stored : 4;
}

RunControl::~RunControl() {
    if (m_.events == this) m_.events = nullptr;
}

int RunControl::addhook(HookSlot slot, int order, StepHook hook) {
    const int id = nexthookid_++;
    (inhooks_ ? addedhooks_ : hooks_).push_back(Hook{id, slot, order, std::move(hook)});
    if (!inhooks_) sorthooks();
    return id;
}

void RunControl::sorthooks() {
    std::stable_sort(hooks_.begin(), hooks_.end(), [](const Hook& a, const Hook& b) {
        if (a.slot != b.slot) return static_cast<int>(a.slot) < static_cast<int>(b.slot);
        return a.order < b.order;
    });
}

void RunControl::removehook(int id) {
    const auto match = [id](const Hook& h) { return h.id == id; };
    addedhooks_.erase(std::remove_if(addedhooks_.begin(), addedhooks_.end(), match), addedhooks_.end());
    if (inhooks_) {
        for (Hook& h : hooks_)
            if (h.id == id) h.removed = hooksremoved_ = true;
        return;
    }
    hooks_.erase(std::remove_if(hooks_.begin(), hooks_.end(), match), hooks_.end());
}

void RunControl::fault(const std::string& text) {
    messenger_.show(text, MessageKind::Critical);
    menuspeed(kRateStep);
    m_.endquiet = true;
}

// Inlined into the run loop, which runs it once per instruction when a run is not quiet.
[[gnu::always_inline]] inline void RunControl::step() {
    Machine& m = m_;
    m.stepstartcycles = m.totalcycles;
    if (m.peripheralwake > 0 && phases.externalinterrupts) phases.externalinterrupts(m);
    const bool interruptsenabled = !m.interrupttable.empty() && (m.datamem[kSregAddress] & kFlagI);
    const int pending = interruptsenabled ? pendinginterrupt(m) : 0;
    if (pending != 0 && !m.afterreti) {
        enterinterrupt(m, pending);
    } else {
        m.afterreti = false;
        ++m.totalinstructions;
        addcycles(m, 1);
        executeinstruction(m);
    }
    steptail();
}

// What follows the instruction in every step.
[[gnu::always_inline]] inline void RunControl::steptail() {
    Machine& m = m_;
    // The instruction may have woken them.
    if (m.peripheralwake > 0) peripheralphases();
    // The next instruction's text is rendered lazily from pc by whoever shows it.
    if (ekran) {
        if (rate_ < kRateUltimate) {
            ekran();
        } else if (ultimaterefresh_) {
            ultimaterefresh_ = false;
            ekran();
        }
    }
    if (m.attention || m.totalcycles >= m.attentioncycle) {
        m.attention = false;
        if (onattention) onattention();
        // After the outside world's turn, which may set the attention cycle afresh.
        if (!m.observers.empty()) attendobservers(m);
    }
    // A breakpoint word and a BREAK instruction both drop the rate, in the hooks' order.
    const bool breakpoint = atbreakpoint(m);
    if (m.breakexecuted || breakpoint || !hooks_.empty()) {
        const bool isbreak = m.breakexecuted || breakpoint;
        m.breakexecuted = false;
        afterstephooks(isbreak);
    }
}

void RunControl::simulatestep() { step(); }

bool RunControl::quiet() const {
    const Machine& m = m_;
    return hooks_.empty() && (!ekran || (rate_ == kRateUltimate && !ultimaterefresh_)) && m.peripheralwake <= 0 &&
           !m.afterreti && !m.attention && m.totalcycles < m.attentioncycle &&
           !(!m.interrupttable.empty() && (m.datamem[kSregAddress] & kFlagI) &&
             (m.interruptsuntracked || pendinginterrupt(m) != 0));
}

// The steps of a quiet machine, as step() would run them, with only the tests that can end
// the quiet: an instruction that wakes the peripherals, enables interrupts, asks for the
// outside world's turn, stops, or is BREAK. That step is finished in full.
uint32_t RunControl::quietsteps(uint32_t count) {
    const QuietRun run = runquiet(m_, count);
    if (run.ended) steptail();
    return run.steps;
}

void RunControl::peripheralphases() {
    Machine& m = m_;
    if (phases.adcstep) phases.adcstep(m);
    if (phases.comparatorstep) phases.comparatorstep(m);
    if (phases.uartstep) phases.uartstep(m);
    if (phases.eepromstep) phases.eepromstep(m);
    if (phases.portstep) phases.portstep(m);
    if (phases.busy && !phases.busy(m)) --m.peripheralwake;
}

void RunControl::afterstephooks(bool isbreak) {
    bool breakchecked = false;
    inhooks_ = true;
    for (size_t i = 0; i < hooks_.size(); ++i) {
        if (!breakchecked && hooks_[i].slot > HookSlot::Breakpoints) {
            breakchecked = true;
            if (isbreak) menuspeed(kRateStep);
        }
        if (!hooks_[i].removed) hooks_[i].call(*this);
    }
    inhooks_ = false;
    if (!breakchecked && isbreak) menuspeed(kRateStep);
    if (hooksremoved_) {
        hooksremoved_ = false;
        hooks_.erase(std::remove_if(hooks_.begin(), hooks_.end(), [](const Hook& h) { return h.removed; }),
                     hooks_.end());
    }
    if (!addedhooks_.empty()) {
        for (Hook& h : addedhooks_) hooks_.push_back(std::move(h));
        addedhooks_.clear();
        sorthooks();
    }
}

void RunControl::yieldtimes(int n) {
    for (int i = 0; i < n; ++i) clock_.yield();
}

void RunControl::runloop() {
    inloop_ = true;
    loopsteps_ = 0;
    // Registers, memories and inputs may have been edited while paused.
    wakeperipherals(m_);
    m_.attention = true;
    double lastyield = clock_.now();
    do {
        if (rate_ >= 5) {
            // Fast rates: many steps between looks at the clock; input still acts only between steps.
            for (uint32_t i = 0; i < kStepsBetweenClockReads && rate_ >= 5 && !m_.stoprequest;) {
                if (quiet()) {
                    const uint32_t done = quietsteps(kStepsBetweenClockReads - i);
                    i += done;
                    loopsteps_ += done;
                } else {
                    step();
                    ++i;
                    ++loopsteps_;
                }
            }
            const double now = clock_.now();
            if (now - lastyield >= kYieldBudgetSeconds || now < lastyield) {
                clock_.yield();
                lastyield = clock_.now();
            }
            continue;
        }
        simulatestep();
        ++loopsteps_;
        yieldtimes(5);
        if (rate_ >= 2 && rate_ <= 4) {
            for (int i = 0; i < kRateNaps[rate_] && rate_ != kRateStep && !m_.stoprequest; ++i) {
                clock_.nap();
                clock_.yield();
            }
        }
        yieldtimes(5);
    } while (rate_ != kRateStep && !m_.stoprequest);
    inloop_ = false;
    if (ekran) ekran();
    if (m_.stoprequest) menustop();
}

void RunControl::setenabled(bool start, bool stop, bool step) {
    startenabled_ = start;
    stopenabled_ = stop;
    stepenabled_ = step;
    if (commandschanged) commandschanged();
}

void RunControl::menuspeed(int rate) {
    if (rate < 1 || rate > 6) return;
    const int previous = rate_;
    rate_ = rate;
    settings_.putsettingdword("Simulation Rate", rate);
    if (!m_.simulationrunning) {
        if (commandschanged) commandschanged();
        return;
    }
    if (rate == kRateUltimate) {
        if (setultimatetimer) setultimatetimer(ultimatetimerms(settings_));
        ultimaterefresh_ = false;
    }
    if (rate == kRateStep) {
        setenabled(startenabled_, stopenabled_, true);
        return;
    }
    if (previous == kRateStep && stepenabled_ && !inloop_) {
        setenabled(startenabled_, stopenabled_, false);
        runloop();
        return;
    }
    if (commandschanged) commandschanged();
}

void RunControl::menustart() {
    if (m_.kinds.simconf == 2) {
        messenger_.show("Simulation module not available for the selected microcontroller model.",
                        MessageKind::Exclamation);
        return;
    }
    m_.simulationrunning = true;
    clean(m_);
    setenabled(false, true, false);
    clock_.yield();
    starttime_ = clock_.now() - 0.01;
    m_.stoprequest = false;
    m_.stopreason = Machine::StopReason::None;
    runtostatementrequest = false;
    addcycles(m_, 1);
    if (ekran) ekran();
    if (objectinit) objectinit();
    if (rate_ == kRateStep) {
        setenabled(false, true, true);
        return;
    }
    if (rate_ == kRateUltimate) {
        if (setultimatetimer) setultimatetimer(ultimatetimerms(settings_));
        ultimaterefresh_ = false;
    }
    runloop();
}

void RunControl::menustep() {
    if (!m_.simulationrunning || rate_ != kRateStep || inloop_) return;
    runloop();
}

std::string RunControl::summarytext(uint64_t instructions, const std::string& elapsed, uint64_t cycles, float mhz) {
    return "Total number of executed instructions is " + std::to_string(instructions) + ".\n" + elapsed +
           " seconds elapsed.\nReal-time duration of the simulation is " + std::to_string(cycles) +
           " clock cycles or " + timetext(cycles, mhz) + " at " + frequencytext(mhz) + " MHz.";
}

void RunControl::menustop() {
    if (!m_.stoprequest && rate_ != kRateStep && inloop_) {
        m_.stoprequest = true;
        m_.stopreason = Machine::StopReason::User;
        clock_.yield();
        return;
    }
    if (!m_.simulationrunning) return;
    m_.simulationrunning = false;
    const std::string elapsed = elapsedtext(starttime_, clock_.now());
    setenabled(true, false, false);
    summary_ = summarytext(m_.totalinstructions, elapsed, m_.totalcycles, m_.clockfrequency);
    messenger_.show(summary_, MessageKind::Information);
    settings_.putsetting("Simulation Duration -2", settings_.getsetting("Simulation Duration -1", "0"));
    settings_.putsetting("Simulation Duration -1", settings_.getsetting("Simulation Duration 0", "0"));
    char value[40];
    std::snprintf(value, sizeof value, "%.15g", timevalue(m_.totalcycles, m_.clockfrequency));
    settings_.putsetting("Simulation Duration 0", value);
}

void RunControl::menuresetstatistics() {
    setinstructioncounter(m_, 0);
    setclockcyclecounter(m_, 0);
    if (ekran) ekran();
}

}  // namespace velmora
