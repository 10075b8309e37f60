/* External interrupts counting pin edges: INT0 on rising edges, INT1 on falling
 * edges, during a 10 ms busy wait. The edges come from the command line, so the
 * expected counts are in the test. */
#include <stdint.h>
#include <util/delay.h>

#include "print.h"

static volatile uint8_t rising, falling;

ISR(INT0_vect) { rising++; }
ISR(INT1_vect) { falling++; }

int main(void) {
#if defined(EICRA)
    EICRA = _BV(ISC01) | _BV(ISC00) | _BV(ISC11);
    EIMSK = _BV(INT0) | _BV(INT1);
#elif defined(GICR)
    MCUCR = _BV(ISC01) | _BV(ISC00) | _BV(ISC11);
    GICR = _BV(INT0) | _BV(INT1);
#else
    MCUCR = _BV(ISC01) | _BV(ISC00) | _BV(ISC11);
    GIMSK = _BV(INT0) | _BV(INT1);
#endif
    sei();
    _delay_ms(10);
    cli();
    uart_init();
    PUTS("rising ");
    put_u32(rising);
    PUTS(" falling ");
    put_u32(falling);
    uart_putchar('\n');
    finish();
    return 0;
}
