/* ADC by polling. Channels 0 to 4 are converted once at start, channel 1 again
 * after a 10 ms pause (its input changes meanwhile), then with the result
 * left-adjusted, then the data-register lock: after a read of ADCL alone a new
 * conversion must not replace the result until ADCH has been read.
 * The inputs come from the command line, so the expected text is in the test. */
#include <stdint.h>
#include <util/delay.h>

#include "print.h"

#define REFERENCE _BV(REFS0) /* AVCC */

static uint16_t convert(uint8_t admux) {
    ADMUX = REFERENCE | admux;
    ADCSRA |= _BV(ADSC);
    while (ADCSRA & _BV(ADSC)) {
    }
    return ADC; /* ADCL, then ADCH */
}

static void put_reading(uint8_t channel, uint16_t value) {
    PUTS("ch");
    put_u32(channel);
    uart_putchar('=');
    put_u32(value);
    uart_putchar('\n');
}

int main(void) {
    uart_init();
    ADCSRA = _BV(ADEN) | _BV(ADPS2) | _BV(ADPS1) | _BV(ADPS0);
    uint16_t first[5];
    for (uint8_t ch = 0; ch < 5; ch++) first[ch] = convert(ch);
    _delay_ms(10);
    const uint16_t later = convert(1);

    for (uint8_t ch = 0; ch < 5; ch++) put_reading(ch, first[ch]);
    PUTS("later ");
    put_reading(1, later);

    /* Left-adjusted: ADCH holds the top eight bits, ADCL the lowest two in bits 7-6. */
    convert(_BV(ADLAR) | 2);
    const uint8_t low = ADCL, high = ADCH;
    PUTS("left ch2 ");
    put_u32(high);
    uart_putchar(' ');
    put_u32(low);
    uart_putchar('\n');

    /* Completion by the interrupt flag instead of ADSC; the flag is cleared by writing 1. */
    ADMUX = REFERENCE | 0;
    ADCSRA |= _BV(ADSC);
    while (!(ADCSRA & _BV(ADIF))) {
    }
    ADCSRA |= _BV(ADIF);
    PUTS("adif ");
    put_reading(0, ADC);

    /* Lock: read ADCL of channel 0's result, convert channel 2, then read ADCH. */
    convert(0);
    const uint8_t locked_low = ADCL;
    ADMUX = REFERENCE | 2;
    ADCSRA |= _BV(ADSC);
    while (ADCSRA & _BV(ADSC)) {
    }
    const uint8_t locked_high = ADCH;
    PUTS("locked ");
    put_u32(locked_high);
    uart_putchar(' ');
    put_u32(locked_low);
    uart_putchar('\n');
    PUTS("after ");
    put_reading(2, convert(2));
    finish();
    return 0;
}
