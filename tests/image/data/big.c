/* An ATmega128 program whose flash image passes 64 KiB: four tables of 28 KiB each.
   One object may not exceed 32 KiB, hence four. The bytes follow a formula of their
   index so that every record of the image differs. */
#include <avr/io.h>
#include <avr/pgmspace.h>

#define B1(i) (uint8_t)(((i) * 151u + ((i) >> 7)) & 0xFF),
#define B4(i) B1(i) B1((i) + 1) B1((i) + 2) B1((i) + 3)
#define B16(i) B4(i) B4((i) + 4) B4((i) + 8) B4((i) + 12)
#define B64(i) B16(i) B16((i) + 16) B16((i) + 32) B16((i) + 48)
#define B256(i) B64(i) B64((i) + 64) B64((i) + 128) B64((i) + 192)
#define B1K(i) B256(i) B256((i) + 256) B256((i) + 512) B256((i) + 768)
#define B4K(i) B1K(i) B1K((i) + 1024) B1K((i) + 2048) B1K((i) + 3072)
#define B28K(i) B4K(i) B4K((i) + 4096) B4K((i) + 8192) B4K((i) + 12288) B4K((i) + 16384) B4K((i) + 20480) B4K((i) + 24576)

const uint8_t table0[] PROGMEM = {B28K(0ul)};
const uint8_t table1[] PROGMEM = {B28K(28672ul)};
const uint8_t table2[] PROGMEM = {B28K(57344ul)};
const uint8_t table3[] PROGMEM = {B28K(86016ul)};

volatile uint8_t sink;

int main(void) {
    for (;;) {
        sink = pgm_read_byte(&table0[PINB]);
        sink = pgm_read_byte(&table1[PINB]);
        sink = pgm_read_byte(&table2[PINB]);
        sink = pgm_read_byte(&table3[PINB]);
    }
}
