/* Hand-written number and text printing over the USART: small enough for a chip
 * with 2 KiB of flash, and with text kept in flash so that 128 bytes of SRAM last. */
#ifndef FIRMWARE_PRINT_H
#define FIRMWARE_PRINT_H

#include <avr/pgmspace.h>
#include <stdint.h>

#include "uart.h"

#define PUTS(text) put_pstr(PSTR(text))

static inline void put_pstr(const char *p) {
    char c;
    while ((c = (char)pgm_read_byte(p++)) != 0) uart_putchar(c);
}

static inline void put_str(const char *s) {
    while (*s) uart_putchar(*s++);
}

static inline void put_u32(uint32_t v) {
    char digits[10];
    uint8_t n = 0;
    do {
        digits[n++] = (char)('0' + v % 10);
        v /= 10;
    } while (v);
    while (n) uart_putchar(digits[--n]);
}

static inline void put_i32(int32_t v) {
    if (v < 0) {
        uart_putchar('-');
        put_u32(-(uint32_t)v);
    } else {
        put_u32((uint32_t)v);
    }
}

/* The low `digits` hexadecimal digits of v, upper case. */
static inline void put_hex(uint32_t v, uint8_t digits) {
    while (digits--) {
        const uint8_t d = (uint8_t)((v >> (4 * digits)) & 15);
        uart_putchar((char)(d < 10 ? '0' + d : 'A' + d - 10));
    }
}

#endif
