#include "core/peripherals.h"

#include <algorithm>

#include "core/adc.h"
#include "core/comparator.h"
#include "core/eeprom.h"
#include "core/extinterrupts.h"
#include "core/ports.h"
#include "core/usart.h"

namespace velmora {

namespace {

// The per-start reset of the pins and the timed peripherals. The previous levels of INT0 and
// INT1 are kept: a level that changed across a restart is an edge in the first step.
void resetperipherals(Machine& m) {
    for (PortState& p : m.ports) {
        if (!m.preserveinputstates) p.pininput = 0;
        p.pinlevel = p.pinread = 0;
    }
    if (!m.preserveinputstates) m.analog.fill(AnalogState{});
    plancomparator(m);
    planexternalinterrupts(m);
    m.adc = AdcState{};
    m.eeprom = EepromState{};
    // The pins take the reset state of the registers at once, before the first step looks.
    m.pinwatch = PinWatch{};
    portstep(m);
}

}  // namespace

bool peripheralsbusy(const Machine& m) {
    return m.peripheralsalwaysawake || m.pinwatch.stale || adcbusy(m) || usartbusy(m) || eeprombusy(m);
}

PeripheralPhases standardphases() {
    PeripheralPhases p;
    p.externalinterrupts = externalinterrupts;
    p.adcstep = adcstep;
    p.comparatorstep = comparatorstep;
    p.uartstep = uartstep;
    p.eepromstep = eepromstep;
    p.portstep = portstep;
    p.busy = peripheralsbusy;
    return p;
}

void installperipherals(Machine& m) {
    if (std::ranges::find(m.cleanhooks, &resetperipherals) == m.cleanhooks.end())
        m.cleanhooks.push_back(&resetperipherals);
    resetperipherals(m);
}

}  // namespace velmora
