/* Software floating point: the four operations, conversions both ways, and a sum
 * that accumulates rounding. Results are printed as their IEEE bit patterns and as
 * scaled integers, so no float formatting code is involved. Everything is float
 * (the AVR's double is the same 32-bit type). */
#include <stdint.h>
#include <string.h>

#include "print.h"

static volatile float inputs[] = {3.14159265f, -2.5f, 1.0e-3f, 12345.678f, -0.1f, 7.0f};
static volatile int32_t integers[] = {0, 1, -1, 16777217L, -123456789L, 2147483520L};

static uint32_t bits(float f) {
    uint32_t u;
    memcpy(&u, &f, sizeof u);
    return u;
}

static void put_float(float f) {
    put_hex(bits(f), 8);
    uart_putchar(' ');
    put_i32((int32_t)(f * 1000.0f));
}

int main(void) {
    uart_init();
    const uint8_t n = sizeof inputs / sizeof inputs[0];
    for (uint8_t i = 0; i < n; i++) {
        const float a = inputs[i], b = inputs[(i + 1) % n];
        PUTS("a ");
        put_float(a);
        PUTS(" b ");
        put_float(b);
        PUTS("\n add ");
        put_float(a + b);
        PUTS(" sub ");
        put_float(a - b);
        PUTS(" mul ");
        put_float(a * b);
        PUTS(" div ");
        put_float(a / b);
        PUTS(" trunc ");
        put_i32((int32_t)a);
        uart_putchar('\n');
    }
    for (uint8_t i = 0; i < sizeof integers / sizeof integers[0]; i++) {
        const float f = (float)integers[i];
        PUTS("int ");
        put_i32(integers[i]);
        PUTS(" -> ");
        put_hex(bits(f), 8);
        PUTS(" -> ");
        put_i32((int32_t)f);
        uart_putchar('\n');
    }
    float harmonic = 0.0f;
    for (uint16_t k = 1; k <= 200; k++) harmonic += 1.0f / (float)k;
    PUTS("harmonic ");
    put_float(harmonic);
    uart_putchar('\n');
    float x = inputs[5];
    for (uint8_t k = 0; k < 6; k++) x = x * 0.5f + 1.0f / x; /* Newton's step towards sqrt(2) */
    PUTS("newton ");
    put_float(x);
    uart_putchar('\n');
    finish();
    return 0;
}
