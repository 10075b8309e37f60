#pragma once
// The on-chip USART at byte level: one byte takes Machine::uarttime microseconds to shift
// either way, whatever UBRR holds. The program reaches it through UDR (core/memory.cpp);
// front ends put bytes on the receiver and take what was sent through the functions below.

#include <cstddef>
#include <cstdint>

#include "core/machine.h"

namespace velmora {

// UCSRA (USR) bits the peripheral drives.
inline constexpr uint8_t kUsartRxc = 0x80, kUsartTxc = 0x40, kUsartUdre = 0x20, kUsartOverrun = 0x08;
// UCSRB (UCR) enable bits, and the UCSRC bit that selects synchronous mode.
inline constexpr uint8_t kUsartRxen = 0x10, kUsartTxen = 0x08, kUsartSynchronous = 0x40;

// The peripheral phase, once per step after the instruction or interrupt entry.
void uartstep(Machine& m);
// True while a byte is sent or received or waits to be read.
bool usartbusy(const Machine& m);

// True for the kinds with a single receive buffer that overruns instead of a two-byte FIFO.
inline bool singlereceivebuffer(const Machine& m) { return m.kinds.uartconf == 6 || m.kinds.uartconf == 7; }

// A byte starts to arrive at the receiver, as from a connected terminal. False, and nothing
// changes, while the previous byte is still being received.
bool usartreceive(Machine& m, uint8_t byte);

// Enable states for the status lamps, from the control registers as the last step left them.
bool usarttransmitterenabled(const Machine& m);
bool usartreceiverenabled(const Machine& m);

// True when a connected terminal may send the next byte: the receiver is enabled and not
// busy with a byte.
inline bool usartreceiverready(const Machine& m) { return m.usart.rxshift < 0 && usartreceiverenabled(m); }

// Lets the transmitter finish at once what was written to UDR: the byte shifting out, then
// the one waiting in the buffer, join the sent bytes, as they would once their time had
// passed. No simulated time passes. For front ends that end a run and want every byte.
void usartfinishsending(Machine& m);

// Moves up to `capacity` sent bytes, oldest first, into `out` and forgets them; returns how many.
size_t usarttakeoutput(Machine& m, uint8_t* out, size_t capacity);

}  // namespace velmora
