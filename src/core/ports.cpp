#include "core/ports.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "core/roleregisters.h"

namespace velmora {

namespace {

constexpr int kAnalogTop = 1023;

// Index 0..6 of an existing port, or -1 for any other code.
int portindex(const Machine& m, int portcode) {
    const int index = portcode - kPortCodeA;
    if (index < 0 || index >= kPortCount || !m.roles.portexists[index]) return -1;
    return index;
}

bool validchannel(int channel) { return channel >= 0 && channel < kAdcChannelCount; }

// Port index of a channel whose pin is a bit of an existing port, or -1.
int channelport(const Machine& m, const AdcChannel& c) {
    if (!c.exists || c.bitmask == 0) return -1;
    return portindex(m, c.portcode);
}

// The six steps in full, and a note of what they worked from.
void workoutpins(Machine& m) {
    const RegisterRoles& r = m.roles;
    std::array<uint8_t, kPortCount> ddr{};
    // A pin turned output forgets what was put on it from outside.
    for (int i = 0; i < kPortCount; ++i) {
        if (!r.portexists[i]) continue;
        ddr[i] = rolevalue(m, r.ddr[i]);
        m.ports[i].pininput &= static_cast<uint8_t>(~ddr[i]);
    }
    // An analog pin reads 0 in digital use.
    for (int ch = 0; ch < kAdcChannelCount; ++ch) {
        const int port = channelport(m, m.adcchannels[ch]);
        if (port >= 0 && m.analog[ch].analogmode)
            m.ports[port].pininput &= static_cast<uint8_t>(~m.adcchannels[ch].bitmask);
    }
    for (int i = 0; i < kPortCount; ++i) {
        if (!r.portexists[i]) continue;
        PortState& p = m.ports[i];
        p.pinlevel = static_cast<uint8_t>((rolevalue(m, r.port[i]) & ddr[i]) | (p.pininput & ~ddr[i]));
        p.pinread = p.pinlevel;
    }
    for (int ch = 0; ch < kAdcChannelCount; ++ch) {
        const int port = channelport(m, m.adcchannels[ch]);
        if (port < 0) continue;
        const uint8_t mask = m.adcchannels[ch].bitmask;
        AnalogState& a = m.analog[ch];
        // A digital pin drives its channel with the rails.
        if ((ddr[port] & mask) || !a.analogmode) a.analoginput = (m.ports[port].pinlevel & mask) ? kAnalogTop : 0;
        if (a.analogmode) m.ports[port].pinread &= static_cast<uint8_t>(~mask);
    }
}

constexpr int kWordBytes = 8;

// Notes the window of data space that holds every DDRx and PORTx, as it is now.
void watchpins(Machine& m) {
    PinWatch& w = m.pinwatch;
    w = PinWatch{.stale = false, .analogchanges = w.analogchanges + 1, .dataspacesize = m.dataspacesize};
    int first = m.dataspacesize, last = -1;
    for (int i = 0; i < kPortCount; ++i) {
        if (!m.roles.portexists[i]) continue;
        for (const int address : {m.roles.ddr[i], m.roles.port[i]})
            if (bound(m, address)) {
                first = std::min(first, address);
                last = std::max(last, address);
            }
    }
    if (last < 0) return;
    w.first = first;
    w.length = last - first + 1;
    const uint8_t* window = m.datamem.data() + first;
    w.narrow = w.length <= 2 * kWordBytes && first + 2 * kWordBytes <= m.dataspacesize;
    if (w.narrow) {
        std::memcpy(&w.low, window, kWordBytes);
        std::memcpy(&w.high, window + kWordBytes, kWordBytes);
    } else if (w.length <= PinWatch::kWindow) {
        std::memcpy(w.seen.data(), window, w.length);
    } else {
        w.stale = true;  // too far apart to watch: worked out in every step
    }
}

// True when no DDRx or PORTx changed since the pins were last worked out and nothing marked
// them stale: the six steps would give what they gave then.
bool pinsunchanged(const Machine& m) {
    const PinWatch& w = m.pinwatch;
    if (w.stale || w.dataspacesize != m.dataspacesize) return false;
    const uint8_t* window = m.datamem.data() + w.first;
    if (w.narrow) {
        uint64_t low, high;
        std::memcpy(&low, window, kWordBytes);
        std::memcpy(&high, window + kWordBytes, kWordBytes);
        return low == w.low && high == w.high;
    }
    return std::memcmp(window, w.seen.data(), w.length) == 0;
}

void markstale(Machine& m) {
    m.pinwatch.stale = true;
    wakeperipherals(m);
    m.attention = true;  // whoever follows the pins sees the new input after this step
    ++m.pinwatch.analogchanges;
}

}  // namespace

void portstep(Machine& m) {
    if (pinsunchanged(m)) return;
    workoutpins(m);
    watchpins(m);
}

bool portexists(const Machine& m, int portcode) { return portindex(m, portcode) >= 0; }

void clearinput(Machine& m, int portcode, uint8_t mask) {
    if (const int i = portindex(m, portcode); i >= 0) {
        m.ports[i].pininput &= static_cast<uint8_t>(~mask);
        markstale(m);
    }
}

void setinput(Machine& m, int portcode, uint8_t mask) {
    if (const int i = portindex(m, portcode); i >= 0) {
        m.ports[i].pininput |= mask;
        markstale(m);
    }
}

void toggleinput(Machine& m, int portcode, uint8_t mask) {
    if (const int i = portindex(m, portcode); i >= 0) {
        m.ports[i].pininput ^= mask;
        markstale(m);
    }
}

void putinput(Machine& m, int portcode, uint8_t value) {
    if (const int i = portindex(m, portcode); i >= 0) {
        m.ports[i].pininput = value;
        markstale(m);
    }
}

uint8_t getinput(const Machine& m, int portcode) {
    const int i = portindex(m, portcode);
    return i >= 0 ? m.ports[i].pininput : 0;
}

int testinput(const Machine& m, int portcode, uint8_t mask) { return (getinput(m, portcode) & mask) ? 1 : 0; }

uint8_t getlevel(const Machine& m, int portcode) {
    const int i = portindex(m, portcode);
    return i >= 0 ? m.ports[i].pinlevel : 0;
}

int testlevel(const Machine& m, int portcode, uint8_t mask) { return (getlevel(m, portcode) & mask) ? 1 : 0; }

uint8_t getreadvalue(const Machine& m, int portcode) {
    const int i = portindex(m, portcode);
    return i >= 0 ? m.ports[i].pinread : 0;
}

int testreadvalue(const Machine& m, int portcode, uint8_t mask) { return (getreadvalue(m, portcode) & mask) ? 1 : 0; }

int isinput(const Machine& m, int portcode, uint8_t mask) {
    const int i = portindex(m, portcode);
    if (i < 0) return 0;
    return (rolevalue(m, m.roles.ddr[i]) & mask) ? 0 : 1;
}

int analoginput(const Machine& m, int channel) { return validchannel(channel) ? m.analog[channel].analoginput : 0; }

void setanaloginput(Machine& m, int channel, int value) {
    if (!validchannel(channel)) return;
    m.analog[channel].analoginput = std::clamp(value, 0, kAnalogTop);
    markstale(m);
}

bool analogmode(const Machine& m, int channel) { return validchannel(channel) && m.analog[channel].analogmode; }

void setanalogmode(Machine& m, int channel, bool on) {
    if (!validchannel(channel)) return;
    m.analog[channel].analogmode = on;
    markstale(m);
}

std::string analogtext(int value, bool usevoltage) {
    if (!usevoltage) return std::to_string(value);
    // 1023 is 5.00 V, shown in hundredths of a volt.
    const long hundredths = std::lround(value / static_cast<double>(kAnalogTop) * 500.0);
    const long magnitude = std::labs(hundredths);
    const long fraction = magnitude % 100;
    return (hundredths < 0 ? "-" : "") + std::to_string(magnitude / 100) + "." + (fraction < 10 ? "0" : "") +
           std::to_string(fraction) + "V";
}

}  // namespace velmora
