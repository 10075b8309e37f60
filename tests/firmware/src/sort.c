/* Insertion sort of a fixed array of signed 16-bit numbers, then of 32-bit unsigned
 * keys derived from it; each printed before and after. */
#include <stdint.h>

#include "print.h"

#ifdef SMALL_TARGET
#define COUNT 10
#else
#define COUNT 40
#endif

static const int16_t seeds[] PROGMEM = {
    312, -7, 0, 32767, -32768, 45, 45, -1, 1000, -999, 12, 7, 8, -8, 250, 3,
};

static int16_t values[COUNT];
static uint32_t keys[COUNT];

static void insertion_sort16(int16_t *a, uint8_t n) {
    for (uint8_t i = 1; i < n; i++) {
        const int16_t v = a[i];
        uint8_t j = i;
        while (j > 0 && a[j - 1] > v) {
            a[j] = a[j - 1];
            j--;
        }
        a[j] = v;
    }
}

static void insertion_sort32(uint32_t *a, uint8_t n) {
    for (uint8_t i = 1; i < n; i++) {
        const uint32_t v = a[i];
        uint8_t j = i;
        while (j > 0 && a[j - 1] > v) {
            a[j] = a[j - 1];
            j--;
        }
        a[j] = v;
    }
}

static void print16(void) {
    for (uint8_t i = 0; i < COUNT; i++) {
        if (i) uart_putchar(' ');
        put_i32(values[i]);
    }
    uart_putchar('\n');
}

static void print32(void) {
    for (uint8_t i = 0; i < COUNT; i++) {
        if (i) uart_putchar(' ');
        put_hex(keys[i], 8);
    }
    uart_putchar('\n');
}

int main(void) {
    uart_init();
    const uint8_t nseeds = sizeof seeds / sizeof seeds[0];
    for (uint8_t i = 0; i < COUNT; i++) {
        /* Beyond the seeds, a scrambled sequence with repeats. */
        values[i] = i < nseeds ? (int16_t)pgm_read_word(&seeds[i]) : (int16_t)((i * 151u) % 613u) - 300;
        keys[i] = ((uint32_t)(uint16_t)values[i] * 2654435761UL) ^ ((uint32_t)i << 28);
    }
    print16();
    insertion_sort16(values, COUNT);
    print16();
    print32();
    insertion_sort32(keys, COUNT);
    print32();
    finish();
    return 0;
}
