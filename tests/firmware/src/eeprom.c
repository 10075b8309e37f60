/* EEPROM through avr-libc: an erased cell, byte writes read back, a block written
 * with eeprom_update_block and then partly changed, a 32-bit value, and the last
 * cells of the EEPROM (which need the high address byte on the larger chips). */
#include <avr/eeprom.h>
#include <stdint.h>

#include "print.h"

#ifdef SMALL_TARGET
#define LAST_CELLS 0x7C /* 128-byte EEPROM */
#else
#define LAST_CELLS 0x3FC /* 1 KiB EEPROM */
#endif

#define CELL(address) ((uint8_t *)(uintptr_t)(address))

static void put_cells(uint16_t address, uint8_t n) {
    put_hex(address, 3);
    uart_putchar(':');
    for (uint8_t i = 0; i < n; i++) {
        uart_putchar(' ');
        put_hex(eeprom_read_byte(CELL(address + i)), 2);
    }
    uart_putchar('\n');
}

int main(void) {
    uart_init();
    PUTS("erased ");
    put_hex(eeprom_read_byte(CELL(0x10)), 2);
    uart_putchar('\n');

    eeprom_write_byte(CELL(0x10), 0x5A);
    for (uint8_t i = 0; i < 8; i++) eeprom_write_byte(CELL(0x20 + i), (uint8_t)(i * 37u + 1u));
    put_cells(0x10, 1);
    put_cells(0x20, 8);

    char text[9] = "Velmora!";
    eeprom_update_block(text, CELL(0x40), 8);
    text[5] = 'A';
    text[7] = '?';
    eeprom_update_block(text, CELL(0x40), 8); /* writes only the two changed cells */
    char back[9] = {0};
    eeprom_read_block(back, CELL(0x40), 8);
    PUTS("block ");
    put_str(back);
    uart_putchar('\n');
    put_cells(0x40, 8);

    eeprom_write_dword((uint32_t *)(uintptr_t)0x50, 0xDEADBEEFUL);
    PUTS("dword ");
    put_hex(eeprom_read_dword((const uint32_t *)(uintptr_t)0x50), 8);
    uart_putchar('\n');
    put_cells(0x50, 4);

    for (uint8_t i = 0; i < 4; i++) eeprom_write_byte(CELL(LAST_CELLS + i), (uint8_t)(0xC0 + i));
    put_cells(LAST_CELLS, 4);
    /* The low address bits alone must not alias the last cells onto the first ones. */
    put_cells(LAST_CELLS & 0xFF, 4);
    finish();
    return 0;
}
