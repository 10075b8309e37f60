/* Host stand-in for avr-libc's program-memory access: on the host, flash is memory. */
#ifndef FIRMWARE_HOST_PGMSPACE_H
#define FIRMWARE_HOST_PGMSPACE_H

#include <stdint.h>
#include <string.h>

#define PROGMEM
#define PSTR(s) (s)
#define pgm_read_byte(p) (*(const uint8_t *)(p))
#define pgm_read_word(p) (*(const uint16_t *)(p))
#define pgm_read_dword(p) (*(const uint32_t *)(p))
#define memcpy_P memcpy
#define strlen_P strlen

#endif
