/* CPU-bound benchmark firmware: CRC-32 (reflected, polynomial 0xEDB88320) over a
 * 256-byte pattern buffer, PASSES times over, printed in hexadecimal over the USART
 * by polling, then cli; sleep. Builds for the host too (-DHOST) to give the expected
 * result independently of any simulator. */
#include <stdint.h>

#include "benchio.h"

#ifndef PASSES
#define PASSES 4000UL
#endif

static uint8_t buffer[256];

static uint32_t crc32_update(uint32_t crc, uint8_t byte) {
    crc ^= byte;
    for (uint8_t bit = 0; bit < 8; bit++) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320UL : crc >> 1;
    return crc;
}


int main(void) {
#ifndef HOST
    UCSR0B = (1 << TXEN0);
#endif
    for (uint16_t i = 0; i < sizeof buffer; i++) buffer[i] = (uint8_t)(i * 7 + 3);
    uint32_t crc = 0xFFFFFFFFUL;
    for (uint32_t pass = 0; pass < PASSES; pass++)
        for (uint16_t i = 0; i < sizeof buffer; i++) crc = crc32_update(crc, buffer[i]);
    puthex32(~crc);
    put('\n');
    finish();
    return 0;
}
