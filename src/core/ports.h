#pragma once
// The port model: what outside drivers put on the pins, the levels the pins take, what a
// read of PINx yields, and the analog inputs. Devices, the Microcontroller View and the
// headless runner change inputs only between steps.

#include <array>
#include <cstdint>
#include <string>

#include "core/machine.h"

namespace velmora {

// Per-port state lives in Machine::ports (indexed by port code minus kPortCodeA) and the
// analog inputs in Machine::analog; see PortState and AnalogState in core/portstate.h.

// Runs the six port steps: inputs of output pins forgotten, analog pins read 0 digitally,
// levels, ADC rails for digital pins, read values. When no DDRx or PORTx changed and no
// operation below was used since the last time, the steps would give the same again and are
// skipped: then it costs a compare.
void portstep(Machine& m);

// Latch operations by port code (5..11) and bit mask; any other port code yields 0 and
// changes nothing.
void clearinput(Machine& m, int portcode, uint8_t mask);
void setinput(Machine& m, int portcode, uint8_t mask);
void toggleinput(Machine& m, int portcode, uint8_t mask);
void putinput(Machine& m, int portcode, uint8_t value);
uint8_t getinput(const Machine& m, int portcode);
int testinput(const Machine& m, int portcode, uint8_t mask);
uint8_t getlevel(const Machine& m, int portcode);
int testlevel(const Machine& m, int portcode, uint8_t mask);
uint8_t getreadvalue(const Machine& m, int portcode);
int testreadvalue(const Machine& m, int portcode, uint8_t mask);
int isinput(const Machine& m, int portcode, uint8_t mask);
bool portexists(const Machine& m, int portcode);

// Analog channels 0..15; an out-of-range channel reads 0 and ignores writes.
int analoginput(const Machine& m, int channel);
void setanaloginput(Machine& m, int channel, int value);
bool analogmode(const Machine& m, int channel);
void setanalogmode(Machine& m, int channel, bool on);
// Display text of an analog value: the plain number, or volts as "2.50V".
std::string analogtext(int value, bool usevoltage);

}  // namespace velmora
