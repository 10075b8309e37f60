#include "cli/vcdtrace.h"

#include <cctype>
#include <cmath>

#include "cli/options.h"
#include "core/ports.h"

namespace velmora {

namespace {

uint64_t powerof10(int exponent) {
    uint64_t value = 1;
    while (exponent-- > 0) value *= 10;
    return value;
}

// Short identifiers from the printable range, as the format allows.
std::string identifier(size_t index) {
    std::string id;
    do {
        id += static_cast<char>('!' + index % 94);
        index /= 94;
    } while (index > 0);
    return id;
}

// A scope name of letters, digits and underscores.
std::string scopename(const std::string& model) {
    std::string name = model.empty() ? "chip" : model;
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
}

}  // namespace

std::optional<PinSelection> parsepinselection(const std::string& text) {
    if (text.size() != 5 && text.size() != 7) return std::nullopt;
    std::string upper;
    for (char c : text) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (upper.rfind("PORT", 0) != 0 || upper[4] < 'A' || upper[4] > 'G') return std::nullopt;
    PinSelection selection{kPortCodeA + (upper[4] - 'A'), 0xFF, text};
    if (upper.size() == 7) {
        if (upper[5] != '.' || upper[6] < '0' || upper[6] > '7') return std::nullopt;
        selection.mask = static_cast<uint8_t>(1u << (upper[6] - '0'));
    }
    return selection;
}

std::string VcdTimescale::unit() const {
    static const char* const kPrefixes[] = {"s", "ms", "us", "ns", "ps", "fs"};
    const int prefix = (exponent + 2) / 3;
    return std::to_string(powerof10(3 * prefix - exponent)) + " " + kPrefixes[prefix];
}

uint64_t VcdTimescale::time(uint64_t cycles) const {
    const unsigned __int128 units = static_cast<unsigned __int128>(cycles) * powerof10(exponent);
    return static_cast<uint64_t>((units + (exact ? 0 : hz / 2)) / hz);
}

VcdTimescale vcdtimescale(float megahertz) {
    VcdTimescale scale;
    scale.hz = std::max<uint64_t>(1, static_cast<uint64_t>(std::llround(static_cast<double>(megahertz) * 1e6)));
    for (int e = 0; e <= 15; ++e)
        if (powerof10(e) % scale.hz == 0) {
            scale.exponent = e;
            return scale;
        }
    scale.exact = false;
    scale.exponent = 15;
    for (int e = 0; e <= 15; ++e)
        if (powerof10(e) / scale.hz >= 1000) {
            scale.exponent = e;
            break;
        }
    return scale;
}

bool VcdTrace::open(const std::string& path, const Machine& m, const std::vector<PinSelection>& pins,
                    std::string& error) {
    std::vector<PinSelection> chosen = pins;
    if (chosen.empty())
        for (int code = kPortCodeA; code < kPortCodeA + kPortCount; ++code)
            if (portexists(m, code)) chosen.push_back({code, 0xFF, ""});
    for (const PinSelection& s : chosen)
        if (portexists(m, s.portcode)) masks_[s.portcode - kPortCodeA] |= s.mask;
    // Pins in port and bit order, each once however often it was named.
    for (int port = 0; port < kPortCount; ++port)
        for (int bit = 0; bit < 8; ++bit)
            if (masks_[port] & (1u << bit)) pins_.push_back({port, bit, identifier(pins_.size())});
    file_.open(path, std::ios::binary | std::ios::trunc);
    if (!file_) {
        error = "cannot write --vcd '" + path + "'";
        return false;
    }
    scale_ = vcdtimescale(m.clockfrequency);
    file_ << "$version velmora-cli " << programversion() << " $end\n"
          << "$comment " << m.modelname << " at " << scale_.hz << " Hz: one clock cycle is "
          << (scale_.exact ? "" : "about ") << scale_.time(1000000) / 1e6 << " units $end\n"
          << "$timescale " << scale_.unit() << " $end\n"
          << "$scope module " << scopename(m.modelname) << " $end\n";
    for (const Pin& p : pins_)
        file_ << "$var wire 1 " << p.id << " P" << static_cast<char>('A' + p.port) << p.bit << " $end\n";
    file_ << "$upscope $end\n$enddefinitions $end\n";
    return true;
}

void VcdTrace::start(const Machine& m) {
    file_ << "#0\n$dumpvars\n";
    for (int port = 0; port < kPortCount; ++port) last_[port] = m.ports[port].pinlevel & masks_[port];
    for (const Pin& p : pins_) file_ << ((last_[p.port] >> p.bit) & 1) << p.id << "\n";
    file_ << "$end\n";
    lasttime_ = 0;
}

void VcdTrace::writetime(uint64_t time) {
    if (time == lasttime_) return;
    file_ << "#" << time << "\n";
    lasttime_ = time;
}

void VcdTrace::look(const Machine& m) {
    for (int port = 0; port < kPortCount; ++port) {
        const uint8_t now = m.ports[port].pinlevel & masks_[port];
        const uint8_t changed = now ^ last_[port];
        if (!changed) continue;
        writetime(scale_.time(m.totalcycles));
        for (const Pin& p : pins_)
            if (p.port == port && (changed >> p.bit) & 1) file_ << ((now >> p.bit) & 1) << p.id << "\n";
        last_[port] = now;
    }
}

bool VcdTrace::finish(const Machine& m) {
    look(m);
    writetime(scale_.time(m.totalcycles));
    file_.close();
    return !file_.fail();
}

}  // namespace velmora
