#include "core/usart.h"

#include "core/roleregisters.h"

namespace velmora {

namespace {

// Simulated microseconds of the step just finished, in the float that every timer keeps.
float stepmicroseconds(const Machine& m) { return static_cast<float>(instructioncycles(m)) / m.clockfrequency; }

// Status bits are driven straight into memory, past the write mask: they are read-only to the program.
void drive(Machine& m, int address, uint8_t bits, bool on) {
    if (!bound(m, address)) return;
    if (on)
        m.datamem[address] |= bits;
    else
        m.datamem[address] &= static_cast<uint8_t>(~bits);
}

void keepoutput(Machine& m, UsartState& u, uint8_t byte) {
    m.attention = true;  // a terminal shows it
    if (u.txoutputcount == kUsartOutputCapacity) {
        u.txoutputstart = static_cast<uint16_t>((u.txoutputstart + 1) % kUsartOutputCapacity);
        --u.txoutputcount;
    }
    u.txoutput[(u.txoutputstart + u.txoutputcount) % kUsartOutputCapacity] = byte;
    ++u.txoutputcount;
}

// Synchronous mode (UCSRC bit 6) stops both directions on the kinds that have UCSRC.
bool asynchronous(const Machine& m) {
    return singlereceivebuffer(m) || !(rolevalue(m, m.roles.ucsrc) & kUsartSynchronous);
}

bool enabled(const Machine& m, uint8_t bit) {
    return (rolevalue(m, m.roles.ucsrb) & bit) && asynchronous(m);
}

// The enable state is only reported: a byte written to UDR goes out even with TXEN clear.
void transmitter(Machine& m, UsartState& u) {
    if (u.txshift < 0 && u.txbuffer >= 0) {
        u.txtimeleft = m.uarttime;
        u.txshift = u.txbuffer;
        u.txbuffer = -1;
    }
    if (u.txshift >= 0) {
        u.txtimeleft -= stepmicroseconds(m);
        if (u.txtimeleft <= 0) {
            u.txtimeleft = 0;
            keepoutput(m, u, static_cast<uint8_t>(u.txshift));
            u.txshift = -1;
            if (u.txbuffer < 0) drive(m, m.roles.ucsra, kUsartTxc, true);
        }
    }
    drive(m, m.roles.ucsra, kUsartUdre, u.txbuffer < 0);
}

void receiver(Machine& m, UsartState& u) {
    if (!enabled(m, kUsartRxen)) u.rxshift = u.rxfifo1 = u.rxfifo2 = -1;
    const bool shifting = u.rxshift >= 0;
    if (u.rxshift < 0) {
        u.rxtime = 0;
    } else {
        u.rxtime += stepmicroseconds(m);
        if (u.rxtime > m.uarttime) {
            if (singlereceivebuffer(m)) {
                // One place: while it holds an unread byte the new one is lost, and that is an overrun.
                drive(m, m.roles.ucsra, kUsartOverrun, u.rxfifo1 >= 0);
                if (u.rxfifo1 < 0) u.rxfifo1 = u.rxshift;
                u.rxshift = -1;
                u.rxtime = 0;
            } else if (u.rxfifo2 < 0) {
                (u.rxfifo1 < 0 ? u.rxfifo1 : u.rxfifo2) = u.rxshift;
                u.rxshift = -1;
                u.rxtime = 0;
            }
            // With both FIFO places full the byte waits in the shifter and its time runs on.
        }
    }
    drive(m, m.roles.ucsra, kUsartRxc, u.rxfifo1 >= 0 || u.rxfifo2 >= 0);
    if (shifting && u.rxshift < 0) m.attention = true;  // a terminal may send the next byte
}

}  // namespace

void uartstep(Machine& m) {
    if (m.kinds.uartconf < 2) return;
    UsartState& u = m.usart;
    // Idle (every place holds -1, so their AND is negative): only the two status bits are due.
    if ((u.txbuffer & u.txshift & u.rxshift & u.rxfifo1 & u.rxfifo2) < 0) {
        if (bound(m, m.roles.ucsra))
            m.datamem[m.roles.ucsra] = static_cast<uint8_t>((m.datamem[m.roles.ucsra] | kUsartUdre) & ~kUsartRxc);
        return;
    }
    transmitter(m, u);
    receiver(m, u);
}

bool usartbusy(const Machine& m) {
    const UsartState& u = m.usart;
    return m.kinds.uartconf >= 2 && (u.txbuffer & u.txshift & u.rxshift & u.rxfifo1 & u.rxfifo2) >= 0;
}

bool usarttransmitterenabled(const Machine& m) { return m.kinds.uartconf >= 2 && enabled(m, kUsartTxen); }

bool usartreceiverenabled(const Machine& m) { return m.kinds.uartconf >= 2 && enabled(m, kUsartRxen); }

bool usartreceive(Machine& m, uint8_t byte) {
    UsartState& u = m.usart;
    if (u.rxshift >= 0) return false;
    u.rxshift = byte;
    u.rxtime = 0;
    wakeperipherals(m);
    return true;
}

void usartfinishsending(Machine& m) {
    if (m.kinds.uartconf < 2) return;
    UsartState& u = m.usart;
    for (int* place : {&u.txshift, &u.txbuffer}) {
        if (*place < 0) continue;
        keepoutput(m, u, static_cast<uint8_t>(*place));
        *place = -1;
        drive(m, m.roles.ucsra, kUsartTxc, true);
    }
    u.txtimeleft = 0;
    drive(m, m.roles.ucsra, kUsartUdre, true);
}

size_t usarttakeoutput(Machine& m, uint8_t* out, size_t capacity) {
    UsartState& u = m.usart;
    size_t n = 0;
    while (n < capacity && u.txoutputcount > 0) {
        out[n++] = u.txoutput[u.txoutputstart];
        u.txoutputstart = static_cast<uint16_t>((u.txoutputstart + 1) % kUsartOutputCapacity);
        --u.txoutputcount;
    }
    return n;
}

}  // namespace velmora
