#include "devices/selectpin.h"

#include "core/machine.h"

namespace velmora {

SelectPin::SelectPin(int port, int bit, bool portonly)
    : port_(port), bit_(portonly ? 0 : bit), portonly_(portonly) {}

void SelectPin::clickport(int portcode) {
    if (portcode >= kPortCodeA && portcode < kPortCodeA + kPortCount) port_ = portcode;
}

void SelectPin::clickbit(int bit) {
    if (!portonly_ && bit >= 0 && bit <= 7) bit_ = bit;
}

void SelectPin::doubleclickport(int portcode) {
    clickport(portcode);
    select();
}

void SelectPin::doubleclickbit(int bit) {
    if (portonly_) return;
    clickbit(bit);
    select();
}

void SelectPin::select() { finished_ = true; }

void SelectPin::cancel() {
    port_ = 0;
    finished_ = true;
}

}  // namespace velmora
