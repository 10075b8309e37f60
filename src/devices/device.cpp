#include "devices/device.h"

#include <ostream>

namespace velmora {

void DeviceLog::line(uint64_t cycle, std::string_view what) {
    if (out_) *out_ << cycle << '\t' << device_ << '\t' << what << '\n';
}

void Device::attach(Machine& m) {
    detach();
    machine_ = &m;
    addobserver(m, this);
}

void Device::detach() {
    if (machine_) removeobserver(*machine_, this);
    machine_ = nullptr;
}

}  // namespace velmora
