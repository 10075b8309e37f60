/* Polling receive: reads signed decimal numbers separated by blanks up to '=',
 * printing each number as it is completed and then their sum. The input comes from
 * the command line, so the expected text is in the test. */
#include <stdint.h>

#include "print.h"

int main(void) {
    uart_init();
    int32_t sum = 0, number = 0;
    uint8_t negative = 0, digits = 0;
    for (;;) {
        const char c = uart_getchar();
        if (c >= '0' && c <= '9') {
            number = number * 10 + (c - '0');
            digits++;
            continue;
        }
        if (c == '-') {
            negative = 1;
            continue;
        }
        if (digits) {
            if (negative) number = -number;
            put_i32(number);
            uart_putchar(' ');
            sum += number;
        }
        number = 0;
        negative = 0;
        digits = 0;
        if (c == '=') break;
    }
    PUTS("sum ");
    put_i32(sum);
    uart_putchar('\n');
    finish();
    return 0;
}
