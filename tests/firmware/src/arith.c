/* 32- and 16-bit multiply, divide and modulo over a table of operand pairs with
 * every sign combination, plus shifts of negative numbers. The operands come from
 * flash at run time so that the compiler cannot fold the results. */
#include <stdint.h>

#include "print.h"

static const int32_t pairs[][2] PROGMEM = {
    {123456789L, 9876L},     {123456789L, -9876L}, {-123456789L, 9876L}, {-123456789L, -9876L},
    {-7L, 2L},               {7L, -2L},            {2147483647L, 65536L}, {-2147483647L, 3L},
    {40000L, -51234L},       {-1L, 1L},            {1000000L, 1000000L},  {0L, -5L},
};

static void put_pair_line(int32_t a, int32_t b) {
    put_i32(a);
    uart_putchar(' ');
    put_i32(b);
    PUTS(" mul ");
    put_i32((int32_t)((uint32_t)a * (uint32_t)b)); /* wraps like the hardware */
    PUTS(" div ");
    put_i32(a / b);
    PUTS(" mod ");
    put_i32(a % b);
    PUTS(" udiv ");
    put_u32((uint32_t)a / (uint32_t)b);
    PUTS(" umod ");
    put_u32((uint32_t)a % (uint32_t)b);
    uart_putchar('\n');
}

static void put_short_line(int16_t a, int16_t b) {
    PUTS("16: ");
    put_i32(a);
    uart_putchar(' ');
    put_i32(b);
    PUTS(" mul ");
    put_i32((int16_t)(uint16_t)((unsigned)(uint16_t)a * (unsigned)(uint16_t)b));
    PUTS(" div ");
    put_i32((int16_t)(a / b));
    PUTS(" mod ");
    put_i32((int16_t)(a % b));
    PUTS(" shr ");
    put_i32((int16_t)(a >> 3));
    uart_putchar('\n');
}

int main(void) {
    uart_init();
    const uint8_t count = sizeof pairs / sizeof pairs[0];
    for (uint8_t i = 0; i < count; i++) {
        const int32_t a = (int32_t)pgm_read_dword(&pairs[i][0]);
        const int32_t b = (int32_t)pgm_read_dword(&pairs[i][1]);
        put_pair_line(a, b);
        put_short_line((int16_t)a, (int16_t)(b | 1));
    }
    /* A 64-bit-free checksum of many products and quotients. */
    uint32_t sum = 0;
    for (uint8_t i = 0; i < count; i++) {
        const uint32_t a = pgm_read_dword(&pairs[i][0]);
        sum = sum * 31u + a * 2654435761UL;
        sum ^= sum >> 13;
        sum += (int32_t)a >> 5;
    }
    PUTS("hash ");
    put_hex(sum, 8);
    uart_putchar('\n');
    finish();
    return 0;
}
