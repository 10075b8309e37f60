#include "devices/lcdmodule.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "core/ports.h"

namespace velmora {

namespace {

std::string hexbyte(uint8_t value) {
    char text[8];
    std::snprintf(text, sizeof text, "%02X", value);
    return text;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

bool level(const Machine& m, const PinWire& wire) { return wire.connected() && testlevel(m, wire.port, wire.mask()); }

}  // namespace

bool exactcountdown(float mhz) {
    int exponent = 0;
    const float mantissa = std::frexp(mhz, &exponent);
    return mantissa == 0.5f && exponent >= -9 && exponent <= 11;
}

LcdContext LcdModule::context(const Machine& m) const {
    return LcdContext{config.lines, config.busycmd, config.busydata, m.clockfrequency, &rom};
}

void LcdModule::initialise() {
    tracing = false;
    state.cursormode = 0;
    state.cgram.fill(LcdGlyph{});
    lcdclear(state);
    error = false;
    if (changed) changed();
}

void LcdModule::trace(const std::string& line) const {
    if (!tracing || tracepath.empty()) return;
    std::ofstream file(tracepath, std::ios::app);
    file << line << "\r\n";
}

void LcdModule::reset(Machine& m) {
    if (tracing && !tracepath.empty()) {
        std::error_code ignored;
        std::filesystem::remove(tracepath, ignored);
    }
    lcdpoweron(state, static_cast<float>(config.busyinit));
    // The countdown starts with the first step; Start's own first cycle is no step's.
    busystart_ = m.totalcycles;
    busystartvalue_ = state.busy;
    startpending_ = true;
    error = false;
    if (changed) changed();
}

void LcdModule::countdownstep(const Machine& m) {
    if (state.busy <= 0) return;
    state.busy -= static_cast<float>(instructioncycles(m)) / m.clockfrequency;
    if (state.busy <= 0) {
        state.busy = 0;
        state.initphase = false;
    }
}

void LcdModule::catchupbusy(const Machine& m) {
    if (exactcountdown(m.clockfrequency)) {
        settle(m);
        return;
    }
    // Not exact: the module has a turn in every step while busy, as the countdown needs.
    countdownstep(m);
}

void LcdModule::settle(const Machine& m) {
    if (state.busy <= 0 || !exactcountdown(m.clockfrequency) || startpending_) return;
    const double left = static_cast<double>(busystartvalue_) -
                        static_cast<double>(m.totalcycles - busystart_) / static_cast<double>(m.clockfrequency);
    if (left <= 0) {
        state.busy = 0;
        state.initphase = false;
    } else {
        state.busy = static_cast<float>(left);
    }
}

uint8_t LcdModule::datamask() const {
    if (config.interface == kLcdInterface8) return 0xFF;
    return config.interface == kLcdInterfaceLow ? 0x0F : 0xF0;
}

void LcdModule::drivereaddata(Machine& m, bool always) {
    const uint8_t value = lcdreadvalue(state, level(m, config.rs));
    const uint8_t input = getinput(m, config.dataport);
    uint8_t driven = value;
    if (config.interface == kLcdInterfaceHigh) driven = static_cast<uint8_t>((input & 0x0F) | (value & 0xF0));
    if (config.interface == kLcdInterfaceLow) driven = static_cast<uint8_t>((input & 0xF0) | (value >> 4));
    if (always || driven != input) putinput(m, config.dataport, driven);
}

void LcdModule::releasebus(Machine& m) {
    putinput(m, config.dataport, static_cast<uint8_t>(getinput(m, config.dataport) & ~datamask()));
}

void LcdModule::execute(Machine& m, uint8_t byte) {
    const bool rs = level(m, config.rs);
    lcdexecute(state, byte, rs, context(m));
    busystart_ = m.totalcycles;
    busystartvalue_ = state.busy;
    trace(std::to_string(m.totalcycles) + "\t" + hexbyte(byte) + "\tRS=" + (rs ? "1" : "0") +
          "\tBIT=" + std::to_string(state.interfacelength) + "\tBUSY=" + number(state.busy));
    if (log.on()) log.line(m.totalcycles, std::string(rs ? "data " : "command ") + hexbyte(byte));
    if (changed) changed();
}

void LcdModule::takebusbyte(Machine& m) {
    const uint8_t port = getlevel(m, config.dataport);
    const double now = static_cast<double>(m.totalcycles) / static_cast<double>(m.clockfrequency);
    // A half byte left alone for 500 microseconds is forgotten.
    if (now - state.laststrobe > 500) state.pendingnibble = 0;
    state.laststrobe = now;
    if (state.interfacelength == 4) {
        const int nibble = config.interface == kLcdInterfaceLow ? (port & 0x0F) : (port >> 4);
        if (state.pendingnibble == 0) {
            state.pendingnibble = nibble * 16 + 1000;
        } else {
            const int byte = state.pendingnibble - 1000 + nibble;
            state.pendingnibble = 0;
            execute(m, static_cast<uint8_t>(byte));
        }
        return;
    }
    state.pendingnibble = 0;
    if (config.interface == kLcdInterface8) {
        execute(m, port);
        return;
    }
    // Eight-bit length on a four-line bus: the start of the usual initialisation.
    execute(m, config.interface == kLcdInterfaceLow ? static_cast<uint8_t>((port & 0x0F) << 4)
                                                   : static_cast<uint8_t>(port & 0xF0));
    state.initphase = true;
}

void LcdModule::bus(Machine& m, bool everystep) {
    const bool rw = level(m, config.rw);
    const bool e = level(m, config.e);
    if (!e && state.previouse) {
        if (!rw) {
            trace(std::to_string(m.totalcycles) + "\tBLOK=" + (state.initphase ? "1" : "0") +
                  "\tBUSY=" + number(state.busy));
            if (state.busy == 0) {
                takebusbyte(m);
            } else if (!state.initphase) {
                error = true;
                if (log.on()) log.line(m.totalcycles, "dropped: busy");
            }
        } else {
            releasebus(m);
        }
    }
    if (rw && e) drivereaddata(m, everystep);
    state.previouse = e;
}

void LcdModule::refreshlcd(Machine& m) {
    countdownstep(m);
    bus(m, true);
}

uint64_t LcdModule::attend(Machine& m) {
    if (startpending_) {
        busystart_ = m.stepstartcycles;
        startpending_ = false;
    }
    catchupbusy(m);
    bus(m, false);
    return nextturn(m);
}

uint64_t LcdModule::nextturn(const Machine& m) const {
    // While a read holds E high the module drives the bus in every step, as the hook did.
    if (state.previouse && level(m, config.rw)) return m.totalcycles + 1;
    if (state.busy <= 0) return UINT64_MAX;
    if (!exactcountdown(m.clockfrequency)) return m.totalcycles + 1;
    const double cycles = std::ceil(static_cast<double>(busystartvalue_) * static_cast<double>(m.clockfrequency));
    return busystart_ + static_cast<uint64_t>(cycles);
}

}  // namespace velmora
