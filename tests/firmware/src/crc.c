/* CRC checks over a fixed buffer: the standard check string "123456789" and a
 * 200-byte pattern. Bitwise CRC-16/XMODEM and CRC-32 in C, and avr-libc's
 * hand-written assembly CRC helpers (C equivalents on the host). */
#include <stdint.h>
#include <util/crc16.h>

#include "print.h"

static const char check[] PROGMEM = "123456789";

static uint16_t crc16_xmodem(uint16_t crc, uint8_t byte) {
    crc ^= (uint16_t)byte << 8;
    for (uint8_t bit = 0; bit < 8; bit++) crc = (crc & 0x8000) ? (uint16_t)((crc << 1) ^ 0x1021) : (uint16_t)(crc << 1);
    return crc;
}

static uint32_t crc32_update(uint32_t crc, uint8_t byte) {
    crc ^= byte;
    for (uint8_t bit = 0; bit < 8; bit++) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320UL : crc >> 1;
    return crc;
}

/* The n-th byte of the buffer under test: the check string, then a pattern. */
static uint8_t buffer_byte(uint8_t source, uint8_t i) {
    if (source == 0) return pgm_read_byte(&check[i]);
    return (uint8_t)(i * 7u + 3u) ^ (uint8_t)(i >> 3);
}

static void report(uint8_t source, uint8_t length) {
    uint16_t xmodem = 0, arc = 0, kermit = 0, own = 0;
    uint8_t maxim = 0;
    uint32_t crc32 = 0xFFFFFFFFUL;
    for (uint8_t i = 0; i < length; i++) {
        const uint8_t b = buffer_byte(source, i);
        xmodem = _crc_xmodem_update(xmodem, b);
        arc = _crc16_update(arc, b);
        kermit = _crc_ccitt_update(kermit, b);
        maxim = _crc_ibutton_update(maxim, b);
        own = crc16_xmodem(own, b);
        crc32 = crc32_update(crc32, b);
    }
    PUTS("len ");
    put_u32(length);
    PUTS(" xmodem ");
    put_hex(xmodem, 4);
    PUTS(" own ");
    put_hex(own, 4);
    PUTS(" arc ");
    put_hex(arc, 4);
    PUTS(" kermit ");
    put_hex(kermit, 4);
    PUTS(" maxim ");
    put_hex(maxim, 2);
    PUTS(" crc32 ");
    put_hex(~crc32, 8);
    uart_putchar('\n');
}

int main(void) {
    uart_init();
    report(0, 9);
    report(1, 200);
    report(1, 1);
    finish();
    return 0;
}
