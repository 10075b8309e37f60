/* Receive interrupt: the handler stores each received byte in a ring buffer; the
 * main loop sends it back in upper case until it has echoed the terminating '.',
 * then reports how many bytes it echoed. The input comes from the command line,
 * so the expected text is in the test. */
#include <stdint.h>

#include "print.h"

#define RING 8 /* a power of two */

static volatile uint8_t ring[RING];
static volatile uint8_t head;
static uint8_t tail;

ISR(UART_RX_VECTOR) {
    ring[head & (RING - 1)] = UART_UDR;
    head++;
}

int main(void) {
    uart_init();
    uart_enable_rx_interrupt();
    sei();
    uint8_t count = 0;
    for (;;) {
        if (tail == head) continue;
        char c = (char)ring[tail & (RING - 1)];
        tail++;
        count++;
        if (c >= 'a' && c <= 'z') c = (char)(c - 'a' + 'A');
        uart_putchar(c);
        if (c == '.') break;
    }
    cli();
    uart_putchar('\n');
    put_u32(count);
    uart_putchar('\n');
    finish();
    return 0;
}
