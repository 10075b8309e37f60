/* A small program for an ATmega8: a running light with a table read from flash. */
#include <avr/io.h>
#include <avr/pgmspace.h>

static const uint8_t pattern[] PROGMEM = {0x01, 0x03, 0x07, 0x0F, 0x1F, 0x3F, 0x7F, 0xFF, 0xAA, 0x55};

int main(void) {
    DDRB = 0xFF;
    for (;;) {
        for (uint8_t i = 0; i < sizeof pattern; ++i) PORTB = pgm_read_byte(&pattern[i]);
    }
}
