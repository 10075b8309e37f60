#include "cli/rundevices.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <ostream>

#include "core/ports.h"
#include "devices/lcdheadless.h"
#include "devices/lcdpaint.h"
#include "devices/pinwire.h"

namespace velmora {

namespace {

// The first port the wiring names that the model lacks, or 0.
int missingport(const Machine& m, std::initializer_list<int> ports) {
    for (int port : ports)
        if (port != 0 && !portexists(m, port)) return port;
    return 0;
}

// ---- the character LCD ------------------------------------------------------------------

bool checklcd(const std::string& setup, std::string& error) { return parselcdspec(setup, error).has_value(); }

// "..#.. .###. ...": the eight rows of a glyph, lit dots as '#'.
std::string dots(const LcdGlyph& glyph) {
    std::string text;
    for (uint8_t row : glyph) {
        if (!text.empty()) text += ' ';
        for (int bit = 4; bit >= 0; --bit) text += (row >> bit) & 1 ? '#' : '.';
    }
    return text;
}

class LcdDevice : public RunDevice {
public:
    explicit LcdDevice(std::unique_ptr<LcdModule> lcd) : lcd_(std::move(lcd)) {}

    // The rows between '|' marks; then, since a user character prints as '?', its dots as
    // the cell keeps them; then the error indicator when a byte was dropped.
    void print(const Machine& m, std::ostream& out) override {
        lcd_->settle(m);
        out << "lcd:\n";
        printlcd(*lcd_, out);
        const LcdConfig& c = lcd_->config;
        const auto blank = [](const LcdGlyph& glyph) {
            return std::all_of(glyph.begin(), glyph.end(), [](uint8_t r) { return r == 0; });
        };
        for (int row = 1; row <= c.lines; ++row)
            for (int column = 1; column <= c.chars; ++column) {
                const int index = lcdvisiblecell(c.lines, c.chars, lcd_->state.shift, row, column);
                const LcdCell& cell = lcd_->state.cells[static_cast<size_t>(index)];
                if (cell.code >= 16 || blank(cell.glyph)) continue;
                out << "row " << row << " column " << column << ": user character " << (cell.code & 7) << ' '
                    << dots(cell.glyph) << "\n";
            }
        if (lcd_->error) out << "ERROR: New command or data received while LCD was busy.\n";
    }

private:
    std::unique_ptr<LcdModule> lcd_;
};

std::unique_ptr<RunDevice> attachlcddevice(Machine& m, const std::string& setup, std::ostream* log,
                                           std::string& error) {
    const auto config = parselcdspec(setup, error);
    if (!config) return nullptr;
    if (const int port = missingport(m, {config->dataport, config->rs.port, config->e.port, config->rw.port})) {
        error = "'" + setup + "': " + m.modelname + " has no " + portname(port);
        return nullptr;
    }
    auto lcd = attachlcd(m, setup, error, log);
    if (!lcd) return nullptr;
    return std::make_unique<LcdDevice>(std::move(lcd));
}

// ---- the table --------------------------------------------------------------------------

constexpr DeviceKind kKinds[] = {
    {"--lcd", checklcd, attachlcddevice},
};

}  // namespace

std::span<const DeviceKind> devicekinds() { return kKinds; }

const DeviceKind* devicekind(std::string_view option) {
    for (const DeviceKind& kind : kKinds)
        if (option == kind.option) return &kind;
    return nullptr;
}

std::string deviceoptionnames() {
    std::string names;
    for (size_t i = 0; i < std::size(kKinds); ++i) {
        if (i > 0) names += i + 1 == std::size(kKinds) ? " or " : ", ";
        names += kKinds[i].option;
    }
    return names;
}

bool RunDevices::attach(Machine& m, const std::vector<DeviceRequest>& requests, bool logging, std::string& error) {
    for (const DeviceRequest& request : requests) {
        std::string why;
        auto device = request.kind->attach(m, request.setup, logging ? &log_ : nullptr, why);
        if (!device) {
            error = std::string(request.kind->option) + " " + why;
            return false;
        }
        devices_.push_back(std::move(device));
    }
    return true;
}

bool RunDevices::openlog(const std::string& path) {
    log_.open(path, std::ios::binary | std::ios::trunc);
    return log_.is_open();
}

bool RunDevices::closelog() {
    if (!log_.is_open()) return true;
    log_.close();
    return !log_.fail();
}

void RunDevices::print(const Machine& m, std::ostream& out) const {
    for (const auto& device : devices_) device->print(m, out);
}

}  // namespace velmora
