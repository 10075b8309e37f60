#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/rundevices.h"
#include "cli/rungdb.h"
#include "cli/runio.h"
#include "cli/runoptions.h"
#include "cli/runwatch.h"
#include "cli/session.h"
#include "cli/statedump.h"
#include "cli/vcdtrace.h"
#include "core/runcontrol.h"

namespace velmora {

namespace {

int exitcode(const Machine& m, bool limitreached, bool breakpointhit) {
    if (limitreached) return kExitLimit;
    if (breakpointhit) return kExitBreakpoint;
    switch (m.stopreason) {
    case Machine::StopReason::Sleep: return kExitSleep;
    case Machine::StopReason::Unrecognized: return kExitUnrecognized;
    case Machine::StopReason::EndOfMemory: return kExitEndOfMemory;
    case Machine::StopReason::InfiniteLoop: return kExitInfiniteLoop;
    default: return kExitStepByStep;
    }
}

// The receiver's bytes in command-line order; false after saying which file could not be read.
bool uartinputbytes(const std::vector<UartSource>& sources, std::string& bytes, std::ostream& err) {
    for (const UartSource& source : sources) {
        if (!source.isfile) {
            bytes += source.text;
            continue;
        }
        std::error_code code;
        std::ifstream file;
        if (std::filesystem::is_regular_file(source.text, code)) file.open(source.text, std::ios::binary);
        std::ostringstream content;
        if (file.is_open()) content << file.rdbuf();  // an empty file gives no bytes, which is fine
        if (!file.is_open() || file.bad()) {
            err << "velmora-cli: cannot read --uart-in-file '" << source.text << "'\n";
            return false;
        }
        bytes += content.str();
    }
    return true;
}

// Word addresses of the --break values: a function of the program by its name first.
std::optional<std::vector<int32_t>> resolvebreakpoints(const std::vector<BreakTarget>& targets,
                                                       const std::vector<ElfSymbol>& symbols, std::string& error) {
    std::vector<int32_t> words;
    for (const BreakTarget& target : targets) {
        const auto named = std::find_if(symbols.begin(), symbols.end(), [&](const ElfSymbol& s) {
            return s.kind == ElfSymbol::Kind::Function && s.name == target.text;
        });
        if (named != symbols.end()) {
            words.push_back(static_cast<int32_t>(named->address / 2));
        } else if (target.address) {
            words.push_back(*target.address);
        } else {
            error = "--break '" + target.text + "': the program has no function of that name";
            return std::nullopt;
        }
    }
    return words;
}

}  // namespace

int runcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string error;
    const std::optional<RunOptions> options = parserunoptions(args, error);
    if (!options) return usageerror(runtext(), error, err);
    if (options->help) {
        printhelp(runtext(), out);
        return 0;
    }
    CliSession session(err);
    if (!session.selectmodel(options->model)) return kExitInputError;
    if (options->clock && !session.setclock(*options->clock)) return kExitUsage;
    if (!session.loadprogram(options->file)) return kExitInputError;
    Machine& m = session.machine();
    m.infiniteloopstop = options->infiniteloopstop;
    if (options->uarttime) m.uarttime = *options->uarttime;
    const std::string mismatch = checkinputs(m, *options);
    if (!mismatch.empty()) return usageerror(runtext(), mismatch, err);
    const auto breakwords = resolvebreakpoints(options->breakpoints, session.symbols(), error);
    if (!breakwords) {
        err << "velmora-cli run: " << error << "\n";
        return kExitInputError;
    }
    const auto watches = resolvewatches(m, session.basicvariables(), options->watches, error);
    if (!watches) {
        err << "velmora-cli run: " << error << "\n";
        return kExitInputError;
    }
    // Wired before Start, whose reset they see; destroyed before the machine they watch.
    RunDevices devices;
    if (!devices.attach(m, options->devices, !options->devicelog.empty(), error))
        return usageerror(runtext(), error, err);
    std::string uartbytes;
    if (!uartinputbytes(options->uartin, uartbytes, err)) return kExitInputError;
    VcdTrace trace;
    if (!options->vcd.empty() && !trace.open(options->vcd, m, options->vcdpins, error)) {
        err << "velmora-cli run: " << error << "\n";
        return kExitInputError;
    }
    if (!options->devicelog.empty() && !devices.openlog(options->devicelog)) {
        err << "velmora-cli run: cannot write --device-log '" << options->devicelog << "'\n";
        return kExitInputError;
    }

    RunControl& run = session.runcontrol();
    std::ofstream basictrace;
    if (!options->tracebasic.empty()) {
        if (session.sourcelines().empty()) {
            err << "velmora-cli run: --trace-basic: '" << options->file
                << "' is no program compiled from BASIC (a .bas, or a .hex with its .bas, .asm and .lst beside it)\n";
            return kExitInputError;
        }
        basictrace.open(options->tracebasic, std::ios::binary | std::ios::trunc);
        if (!basictrace) {
            err << "velmora-cli run: cannot write --trace-basic '" << options->tracebasic << "'\n";
            return kExitInputError;
        }
        run.addhook(HookSlot::SourceTracking, 0, [&basictrace, &lines = session.sourcelines(), last = 0](RunControl& rc) mutable {
            const int line = lines.lineat(rc.machine().pc);
            if (line == 0 || line == last) return;
            last = line;
            basictrace << rc.machine().totalcycles << '\t' << line << '\n';
        });
    }
    RunIo io(m, out, options->inputs, std::move(uartbytes));
    io.attach(run, trace.isopen() ? &trace : nullptr);
    // The closing summary comes after the last bytes, as on a terminal that shows both.
    session.messenger().beforeshow = [&io] { io.finish(); };

    bool limitreached = false, breakpointhit = false;
    const uint64_t maxcycles = options->maxcycles, maxinstructions = options->maxinstructions;
    // Breakpoint words keep quiet stretches fast: the machine tests them itself.
    setbreakpoints(m, *breakwords);
    if (maxcycles && !maxinstructions) {
        // A cycle limit alone is a cycle the machine calls attention at, which keeps quiet
        // stretches fast; it is checked right after the outside world's own turn.
        const std::function<void()> betweensteps = run.onattention;
        run.onattention = [&, betweensteps] {
            betweensteps();
            if (m.totalcycles >= maxcycles) {
                limitreached = true;
                run.menuspeed(kRateStep);
            }
            m.attentioncycle = std::min(m.attentioncycle, maxcycles);
        };
    } else if (maxinstructions) {
        run.addhook(HookSlot::Breakpoints, 0, [&](RunControl& rc) {
            const Machine& mm = rc.machine();
            if ((maxcycles && mm.totalcycles >= maxcycles) || mm.totalinstructions >= maxinstructions) {
                limitreached = true;
                rc.menuspeed(kRateStep);
            }
        });
    }
    if (options->gdbport) {
        if (rungdb(session, *options->gdbport, err) == GdbOutcome::NoServer) return kExitInputError;
    } else {
        run.menuspeed(kRateUltimate);
        run.menustart();
    }
    if (m.simulationrunning) {
        // Ended by a limit, a breakpoint, BREAK or a fault: stop as the Stop command does.
        breakpointhit = !limitreached && atbreakpoint(m);
        m.stoprequest = true;
        run.menustop();
    }
    io.finish();
    if (trace.isopen() && !trace.finish(m)) {
        err << "velmora-cli run: cannot write --vcd '" << options->vcd << "'\n";
        return kExitInputError;
    }
    if (basictrace.is_open() && !(basictrace.flush() && basictrace)) {
        err << "velmora-cli run: cannot write --trace-basic '" << options->tracebasic << "'\n";
        return kExitInputError;
    }
    if (!devices.closelog()) {
        err << "velmora-cli run: cannot write --device-log '" << options->devicelog << "'\n";
        return kExitInputError;
    }
    // Devices and the dump each start on a line of their own, after what the USART sent.
    bool linestart = io.atlinestart();
    if (!devices.empty()) {
        if (!linestart) out << "\n";
        devices.print(m, out);
        linestart = true;
    }
    const WatchedValues watched = watchedvalues(m, options->watches, *watches);
    if (!watched.empty() && !options->dumpjson) {
        if (!linestart) out << "\n";
        printwatches(watched, out);
        linestart = true;
    }
    if (options->dump) {
        if (!linestart) out << "\n";
        if (options->dumpjson)
            dumpstatejson(m, out, watched);
        else
            dumpstate(m, out);
    }
    return exitcode(m, limitreached, breakpointhit);
}

}  // namespace velmora
