/* avr-libc's sprintf and friends: integer conversions with flags, widths and
 * precision, strings and characters, truncation by snprintf, and number parsing. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "print.h"

static char line[96];

static void send(int count) {
    put_str(line);
    PUTS(" [");
    put_i32(count);
    PUTS("]\n");
}

/* Read through volatile so that the compiler cannot format anything at build time. */
static volatile int16_t s16[] = {0, 1, -1, 42, -42, 32767, -32768, 1234};
static volatile uint16_t u16[] = {0, 7, 255, 4096, 65535, 48879};
static volatile int32_t s32[] = {0, 100000L, -100000L, 2147483647L, -2147483647L - 1, 16777216L};
static const char *volatile words[] = {"", "a", "velmora", "simulated USART"};

int main(void) {
    uart_init();
    for (uint8_t i = 0; i < sizeof s16 / sizeof s16[0]; i++) {
        const int v = s16[i];
        send(sprintf(line, "%d|%6d|%-6d|%06d|%+d|% d|%i", v, v, v, v, v, v, v));
    }
    for (uint8_t i = 0; i < sizeof u16 / sizeof u16[0]; i++) {
        const unsigned v = u16[i];
        send(sprintf(line, "%u|%x|%X|%04x|%o|%8u|%-8x|", v, v, v, v, v, v, v));
    }
    for (uint8_t i = 0; i < sizeof s32 / sizeof s32[0]; i++) {
        const long v = s32[i];
        const unsigned long u = (uint32_t)s32[i];
        send(sprintf(line, "%ld|%12ld|%-12ld|%lu|%lx|%08lX", v, v, v, u, u, u));
    }
    for (uint8_t i = 0; i < sizeof words / sizeof words[0]; i++) {
        const char *w = (const char *)words[i];
        send(sprintf(line, "[%s]|[%10s]|[%-10s]|[%.3s]|%c%c", w, w, w, w, 'x', w[0] ? w[0] : '-'));
    }
    send(sprintf(line, "%%|%#x|%s=%d", 255u, "sum", s16[3] / 2 + 21));
    send(snprintf(line, 8, "%s", words[3]));
    send(sprintf(line, "%ld %ld %lu %d", strtol("-12345", 0, 10), strtol("0x7fff", 0, 16),
                 strtoul("4000000000", 0, 10), atoi("  -77x")));
    send(sprintf(line, "%d %u", (int)strlen("velmora"), (unsigned)sizeof(int16_t)));
    finish();
    return 0;
}
