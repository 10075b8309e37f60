/* Host stand-in for avr-libc's EEPROM calls: an erased array of cells. Addresses
 * are the small numbers the firmware casts to pointers. */
#ifndef FIRMWARE_HOST_EEPROM_H
#define FIRMWARE_HOST_EEPROM_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>

static uint8_t host_eeprom[4096];
static int host_eeprom_ready;

static inline uint8_t *host_eeprom_cell(const volatile void *address) {
    if (!host_eeprom_ready) {
        memset(host_eeprom, 0xFF, sizeof host_eeprom);
        host_eeprom_ready = 1;
    }
    return &host_eeprom[(uintptr_t)address % sizeof host_eeprom];
}

static inline uint8_t eeprom_read_byte(const uint8_t *address) { return *host_eeprom_cell(address); }
static inline void eeprom_write_byte(uint8_t *address, uint8_t value) { *host_eeprom_cell(address) = value; }
static inline void eeprom_update_byte(uint8_t *address, uint8_t value) { *host_eeprom_cell(address) = value; }

static inline void eeprom_read_block(void *destination, const void *source, size_t n) {
    for (size_t i = 0; i < n; i++) ((uint8_t *)destination)[i] = *host_eeprom_cell((const uint8_t *)source + i);
}
static inline void eeprom_update_block(const void *source, void *destination, size_t n) {
    for (size_t i = 0; i < n; i++) *host_eeprom_cell((uint8_t *)destination + i) = ((const uint8_t *)source)[i];
}

/* Little-endian, as the AVR keeps multi-byte values. */
static inline uint32_t eeprom_read_dword(const uint32_t *address) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; i--) v = (v << 8) | *host_eeprom_cell((const uint8_t *)address + i);
    return v;
}
static inline void eeprom_write_dword(uint32_t *address, uint32_t value) {
    for (int i = 0; i < 4; i++) *host_eeprom_cell((uint8_t *)address + i) = (uint8_t)(value >> (8 * i));
}

#endif
