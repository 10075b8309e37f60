#include "models/corepins.h"

#include <array>

namespace velmora {

namespace {

// Levels worked out from PORTx and DDRx with input latches of its own.
class LatchPins : public PinAccess {
public:
    explicit LatchPins(Machine& m) : m_(m) {}

    void evaluate() override {}
    uint8_t direction(int port) const override { return reg(m_.roles.ddr, port); }
    uint8_t input(int port) const override { return valid(port) ? inputs_[port - kPortCodeA] : 0; }
    uint8_t level(int port) const override {
        const uint8_t ddr = direction(port);
        return static_cast<uint8_t>((reg(m_.roles.port, port) & ddr) | (input(port) & ~ddr));
    }
    void toggleinput(int port, uint8_t mask) override {
        if (valid(port)) inputs_[port - kPortCodeA] ^= mask;
    }
    int analoginput(int channel) const override { return inchannels(channel) ? analog_[channel] : 0; }
    void setanaloginput(int channel, int value) override {
        if (inchannels(channel)) analog_[channel] = value;
    }
    bool analogmode(int channel) const override { return inchannels(channel) && mode_[channel]; }
    void setanalogmode(int channel, bool on) override {
        if (inchannels(channel)) mode_[channel] = on;
    }

private:
    static bool valid(int port) { return port >= kPortCodeA && port < kPortCodeA + kPortCount; }
    static bool inchannels(int channel) { return channel >= 0 && channel < kAdcChannelCount; }
    uint8_t reg(const std::array<int, kPortCount>& addresses, int port) const {
        if (!valid(port)) return 0;
        const int address = addresses[port - kPortCodeA];
        return address > 0 && address < m_.dataspacesize ? m_.datamem[address] : 0;
    }

    Machine& m_;
    std::array<uint8_t, kPortCount> inputs_{};
    std::array<int, kAdcChannelCount> analog_{};
    std::array<bool, kAdcChannelCount> mode_{};
};

}  // namespace

std::unique_ptr<PinAccess> makecorepins(Machine& m) { return std::make_unique<LatchPins>(m); }

}  // namespace velmora
