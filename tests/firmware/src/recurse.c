/* Deep recursion: Ackermann's function, a recursive sum that cannot be turned into
 * a loop (it records its depth), and naive Fibonacci. Sized to the chip's SRAM. */
#include <stdint.h>

#include "print.h"

#ifdef SMALL_TARGET
#define ACK_M 2
#define ACK_N 3
#define SUM_N 10
#define FIB_N 12
#else
#define ACK_M 3
#define ACK_N 4
#define SUM_N 200
#define FIB_N 20
#endif

static uint8_t depth, maxdepth;
static uint16_t calls;

static void enter(void) {
    calls++;
    if (++depth > maxdepth) maxdepth = depth;
}

static uint16_t ackermann(uint16_t m, uint16_t n) {
    enter();
    uint16_t r;
    if (m == 0)
        r = n + 1;
    else if (n == 0)
        r = ackermann(m - 1, 1);
    else
        r = ackermann(m - 1, ackermann(m, n - 1));
    depth--;
    return r;
}

static uint32_t squaresum(uint16_t n) {
    enter();
    const uint32_t r = n == 0 ? 0 : squaresum(n - 1) + (uint32_t)n * n;
    depth--;
    return r;
}

static uint16_t fibonacci(uint8_t n) {
    enter();
    const uint16_t r = n < 2 ? n : (uint16_t)(fibonacci(n - 1) + fibonacci(n - 2));
    depth--;
    return r;
}

static void report(uint32_t value) {
    put_u32(value);
    PUTS(" calls ");
    put_u32(calls);
    PUTS(" depth ");
    put_u32(maxdepth);
    uart_putchar('\n');
    calls = 0;
    maxdepth = 0;
}

int main(void) {
    uart_init();
    PUTS("ack(");
    put_u32(ACK_M);
    uart_putchar(',');
    put_u32(ACK_N);
    PUTS(") = ");
    report(ackermann(ACK_M, ACK_N));
    PUTS("squaresum(");
    put_u32(SUM_N);
    PUTS(") = ");
    report(squaresum(SUM_N));
    PUTS("fib(");
    put_u32(FIB_N);
    PUTS(") = ");
    report(fibonacci(FIB_N));
    finish();
    return 0;
}
