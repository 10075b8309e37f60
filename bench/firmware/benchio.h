/* What the benchmark firmware share: a character out over the USART by polling and the end
 * of the run (cli; sleep once the last byte has gone), or on the host stdout (-DHOST), and a
 * 32-bit number in hexadecimal. */
#ifndef BENCHIO_H
#define BENCHIO_H

#include <stdint.h>

#ifdef HOST
#include <stdio.h>
static void put(char c) { putchar(c); }
static void finish(void) {}
#else
#include <avr/io.h>
static void put(char c) {
    while (!(UCSR0A & (1 << UDRE0))) {
    }
    UDR0 = c;
}
static void finish(void) {
    while (!(UCSR0A & (1 << TXC0))) {
    }
    __asm__ volatile("cli\n\tsleep");
}
#endif

static void puthex32(uint32_t v) {
    for (int8_t shift = 28; shift >= 0; shift -= 4) put("0123456789ABCDEF"[(v >> shift) & 15]);
}

#endif
