/* CPU-bound benchmark firmware with another mix than the CRC: a fixed-point Mandelbrot set
 * (Q12 numbers in 32-bit integers, so avr-gcc calls its multiply routine and moves words
 * through the stack), FRAMES frames of 96 x 48 points with at most 96 iterations, the
 * iteration counts summed and printed in hexadecimal over the USART by polling, then
 * cli; sleep. Builds for the host too (-DHOST) to give the expected result independently
 * of any simulator: integer arithmetic only, so both give the same sum. */
#include <stdint.h>

#ifndef FRAMES
#define FRAMES 3
#endif
#define WIDTH 96
#define HEIGHT 48
#define LIMIT 96
#define FRAC 12

#include "benchio.h"

/* Iterations until |z| > 2 for c = cr + i ci, both Q12. */
static uint8_t escape(int32_t cr, int32_t ci) {
    int32_t zr = 0, zi = 0;
    uint8_t n = 0;
    while (n < LIMIT) {
        const int32_t zr2 = (zr * zr) >> FRAC, zi2 = (zi * zi) >> FRAC;
        if (zr2 + zi2 > (4L << FRAC)) break;
        zi = ((zr * zi) >> (FRAC - 1)) + ci;
        zr = zr2 - zi2 + cr;
        n++;
    }
    return n;
}

int main(void) {
#ifndef HOST
    UCSR0B = (1 << TXEN0);
#endif
    uint32_t sum = 0;
    for (uint8_t frame = 0; frame < FRAMES; frame++)
        for (uint8_t y = 0; y < HEIGHT; y++)
            for (uint8_t x = 0; x < WIDTH; x++) {
                /* Each frame a little further right: -2.5 .. 1.0 by -1.25 .. 1.25. */
                const int32_t cr = -10240L + (int32_t)x * 14336L / WIDTH + frame * 64;
                const int32_t ci = -5120L + (int32_t)y * 10240L / HEIGHT;
                sum = sum * 31 + escape(cr, ci);
            }
    puthex32(sum);
    put('\n');
    finish();
    return 0;
}
