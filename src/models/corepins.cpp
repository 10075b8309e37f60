#include "models/corepins.h"

#include "core/ports.h"
#include "core/roleregisters.h"

namespace velmora {

namespace {

// The view's pins are the machine's own pin model: its input latches, levels and analog
// inputs, with directions straight from DDRx.
class CorePins : public PinAccess {
public:
    explicit CorePins(Machine& m) : m_(m) {}

    void evaluate() override { portstep(m_); }
    uint8_t direction(int port) const override {
        return portexists(m_, port) ? rolevalue(m_, m_.roles.ddr[port - kPortCodeA]) : 0;
    }
    uint8_t input(int port) const override { return getinput(m_, port); }
    uint8_t level(int port) const override { return getlevel(m_, port); }
    void toggleinput(int port, uint8_t mask) override { velmora::toggleinput(m_, port, mask); }
    int analoginput(int channel) const override { return velmora::analoginput(m_, channel); }
    void setanaloginput(int channel, int value) override { velmora::setanaloginput(m_, channel, value); }
    bool analogmode(int channel) const override { return velmora::analogmode(m_, channel); }
    void setanalogmode(int channel, bool on) override { velmora::setanalogmode(m_, channel, on); }

private:
    Machine& m_;
};

}  // namespace

std::unique_ptr<PinAccess> makecorepins(Machine& m) { return std::make_unique<CorePins>(m); }

}  // namespace velmora
