/* A 2x16 character LCD in 4-bit mode on PORTB: D4-D7 on PB4-PB7, RS on PB3, E on PB2.
 * The usual start-up (three 0x3 nibbles, 0x2, then 0x28, display control, clear and entry
 * mode), user character 0 (a bell) defined in CGRAM, the second line written first at a set
 * DDRAM address, then the first line, ending in the bell. Then "lcd done" over the USART and
 * sleep.
 *
 * Built as it is, R/W is not connected (tied to ground) and every wait is a fixed delay
 * from util/delay.h, longer than the module's busy times at F_CPU. Built with LCD_POLL_BUSY
 * (lcdpoll.c), R/W is on PB1 and after 4-bit mode is on the program reads the busy flag
 * after every byte instead.
 *
 * The display at the end:
 *     "Velmora LCD \0   "    (\0: user character 0, the bell, in column 13)
 *     "  sum 1..10 = 55"
 */
#include <avr/io.h>
#include <stdint.h>
#include <util/delay.h>

#include "uart.h"

#define LCD_DATA 0xF0 /* PB4-PB7 */
#define LCD_RS _BV(3)
#define LCD_E _BV(2)
#define LCD_RW _BV(1)

/* Five dots a row, the top row first. */
static const uint8_t bell[8] = {0x04, 0x0E, 0x0E, 0x0E, 0x1F, 0x00, 0x04, 0x00};

static void strobe(void) {
    PORTB |= LCD_E;
    _delay_us(1);
    PORTB &= (uint8_t)~LCD_E;
    _delay_us(1);
}

/* The high four bits of value on D4-D7, taken on the falling edge of E. */
static void nibble(uint8_t value) {
    PORTB = (uint8_t)((PORTB & (uint8_t)~LCD_DATA) | (value & LCD_DATA));
    strobe();
}

#ifdef LCD_POLL_BUSY
/* In 4-bit mode a read takes two strobes; bit 7 of the first half is the busy flag. */
static void wait_ready(void) {
    uint8_t status;
    DDRB &= (uint8_t)~LCD_DATA;
    PORTB &= (uint8_t)~(LCD_DATA | LCD_RS); /* no pull-ups; RS low reads the status */
    PORTB |= LCD_RW;
    do {
        PORTB |= LCD_E;
        _delay_us(1);
        status = PINB;
        PORTB &= (uint8_t)~LCD_E;
        _delay_us(1);
        strobe(); /* the low half: address bits, not needed */
    } while (status & 0x80);
    PORTB &= (uint8_t)~LCD_RW;
    DDRB |= LCD_DATA;
}
#endif

static void lcd_write(uint8_t value, uint8_t data) {
    if (data)
        PORTB |= LCD_RS;
    else
        PORTB &= (uint8_t)~LCD_RS;
    nibble(value);
    nibble((uint8_t)(value << 4));
#ifdef LCD_POLL_BUSY
    wait_ready();
#else
    if (!data && value < 4)
        _delay_ms(2); /* clear and home take 1.64 ms */
    else
        _delay_us(50); /* commands 42 us, data 46 us */
#endif
}

static void lcd_command(uint8_t command) { lcd_write(command, 0); }
static void lcd_putc(char c) { lcd_write((uint8_t)c, 1); }
static void lcd_puts(const char* text) {
    while (*text) lcd_putc(*text++);
}

/* Set DDRAM address: row 0 starts at 0x00, row 1 at 0x40. */
static void lcd_goto(uint8_t row, uint8_t column) { lcd_command((uint8_t)(0x80 | (row ? 0x40 : 0x00) | column)); }

static void lcd_init(void) {
    DDRB = LCD_DATA | LCD_RS | LCD_E | LCD_RW;
    PORTB = 0;
    _delay_ms(20); /* power-up */
    /* Three times "8-bit": whatever state the module was in, it is now in 8-bit mode. */
    nibble(0x30);
    _delay_ms(5);
    nibble(0x30);
    _delay_us(150);
    nibble(0x30);
    _delay_us(150);
    nibble(0x20); /* 4-bit from here on */
    _delay_us(150);
    lcd_command(0x28); /* 4-bit, two lines, 5x8 dots */
    lcd_command(0x0C); /* display on, cursor off, no blink */
    lcd_command(0x01); /* clear */
    lcd_command(0x06); /* entry mode: address up, no shift */
}

static void lcd_define(uint8_t index, const uint8_t* rows) {
    lcd_command((uint8_t)(0x40 | (index << 3))); /* set CGRAM address */
    for (uint8_t i = 0; i < 8; i++) lcd_write(rows[i], 1);
}

static void lcd_putu(uint16_t value) {
    char digits[6];
    uint8_t n = 0;
    do {
        digits[n++] = (char)('0' + value % 10);
        value /= 10;
    } while (value);
    while (n) lcd_putc(digits[--n]);
}

int main(void) {
    lcd_init();
    lcd_define(0, bell);

    uint16_t sum = 0;
    for (uint8_t i = 1; i <= 10; i++) sum += i;
    lcd_goto(1, 2);
    lcd_puts("sum 1..10 = ");
    lcd_putu(sum);

    lcd_goto(0, 0);
    lcd_puts("Velmora LCD ");
    lcd_putc(0);

    uart_init();
    const char* done = "lcd done\n";
    while (*done) uart_putchar(*done++);
    finish();
    return 0;
}
