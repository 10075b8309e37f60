/* A program to debug with avr-gdb, built with -g -Og into an ELF file: globals in SRAM (a
 * table and a total with start values, so .data is copied from flash, and a count in
 * .bss), bytes in EEPROM (EEMEM, so the ELF carries an .eeprom section), a function with a
 * local, and a line that writes a watched global. It prints the total and the count over
 * the USART: "sum 0204 count 0A" (1 + 4 + ... + 100 = 385 = 0x181, plus the start value
 * 0x83; ten rounds). Built with -DHOST it prints the same on the host. */
#include <stdint.h>

#include "../src/print.h"

#ifdef HOST
#define EEMEM
#else
#include <avr/eeprom.h>
#endif

/* Not read by the program: it is there for the EEPROM image. */
EEMEM __attribute__((used)) uint8_t settings[4] = {0xC0, 0xFF, 0xEE, 0x42};
uint8_t table[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
volatile uint16_t total = 0x83;
volatile uint8_t count;

__attribute__((noinline)) static uint16_t square(uint8_t value) {
    const uint16_t wide = value;
    return wide * wide;
}

int main(void) {
    uart_init();
    for (uint8_t i = 0; i < sizeof table; i++) {
        const uint16_t term = square(table[i]);
        total += term;
        count = i + 1;
    }
    PUTS("sum ");
    put_hex(total, 4);
    PUTS(" count ");
    put_hex(count, 2);
    uart_putchar('\n');
    finish();
    return 0;
}
