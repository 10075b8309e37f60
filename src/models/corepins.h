#pragma once
// The Microcontroller View's access to the pins of the machine.

#include <memory>

#include "core/machine.h"
#include "models/pinaccess.h"

namespace velmora {

std::unique_ptr<PinAccess> makecorepins(Machine& m);

}  // namespace velmora
