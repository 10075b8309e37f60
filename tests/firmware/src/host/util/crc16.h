/* Host stand-in for avr-libc's CRC helpers (inline assembly on the AVR), written
 * from the polynomials they use: CRC-16 0xA001 reflected, CCITT 0x8408 reflected,
 * XMODEM 0x1021 not reflected, Dallas/Maxim 8-bit 0x8C reflected. */
#ifndef FIRMWARE_HOST_CRC16_H
#define FIRMWARE_HOST_CRC16_H

#include <stdint.h>

static inline uint16_t host_crc_reflected(uint16_t crc, uint8_t data, uint16_t poly) {
    crc ^= data;
    for (int i = 0; i < 8; i++) crc = (crc & 1) ? (uint16_t)((crc >> 1) ^ poly) : (uint16_t)(crc >> 1);
    return crc;
}

static inline uint16_t _crc16_update(uint16_t crc, uint8_t data) { return host_crc_reflected(crc, data, 0xA001); }
static inline uint16_t _crc_ccitt_update(uint16_t crc, uint8_t data) { return host_crc_reflected(crc, data, 0x8408); }
static inline uint8_t _crc_ibutton_update(uint8_t crc, uint8_t data) {
    return (uint8_t)host_crc_reflected(crc, data, 0x8C);
}

static inline uint16_t _crc_xmodem_update(uint16_t crc, uint8_t data) {
    crc ^= (uint16_t)data << 8;
    for (int i = 0; i < 8; i++) crc = (crc & 0x8000) ? (uint16_t)((crc << 1) ^ 0x1021) : (uint16_t)(crc << 1);
    return crc;
}

#endif
