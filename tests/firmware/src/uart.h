/* Polling USART for the test firmware: init, putchar, getchar, and finish, which
 * ends the run with cli; sleep right after the last write to UDR, as ordinary
 * firmware does: the last byte or two are still in the transmitter then, and the
 * runner must let them out.
 * The register names adapt to the chip through avr-libc's io headers: USART0
 * names (UDR0, UCSR0A...) where the chip has them, the plain names otherwise, and
 * URSEL where UCSRC shares its address with UBRRH.
 * Built with -DHOST the same calls go to stdin and stdout, so a program compiled for
 * the host prints exactly what the firmware should send. */
#ifndef FIRMWARE_UART_H
#define FIRMWARE_UART_H

#include <stdint.h>

#ifdef HOST

#include <stdio.h>

static inline void uart_init(void) {}
static inline void uart_enable_rx_interrupt(void) {}
static inline void uart_putchar(char c) { putchar(c); }
static inline char uart_getchar(void) { return (char)getchar(); }
static inline void finish(void) { fflush(stdout); }

#else

#include <avr/interrupt.h>
#include <avr/io.h>
#include <avr/sleep.h>

#if F_CPU >= 16000000UL
#define BAUD 38400
#else
#define BAUD 9600
#endif
#include <util/setbaud.h>

#if defined(UDR0)
#define UART_UDR UDR0
#define UART_UCSRA UCSR0A
#define UART_UCSRB UCSR0B
#define UART_UCSRC UCSR0C
#define UART_UBRRL UBRR0L
#define UART_UBRRH UBRR0H
#define UART_RXC RXC0
#define UART_TXC TXC0
#define UART_UDRE UDRE0
#define UART_U2X U2X0
#define UART_RXEN RXEN0
#define UART_TXEN TXEN0
#define UART_RXCIE RXCIE0
#define UART_UCSZ1 UCSZ01
#define UART_UCSZ0 UCSZ00
#ifdef URSEL0
#define UART_URSEL_BIT _BV(URSEL0)
#endif
#else
#define UART_UDR UDR
#define UART_UCSRA UCSRA
#define UART_UCSRB UCSRB
#define UART_UCSRC UCSRC
#define UART_UBRRL UBRRL
#define UART_UBRRH UBRRH
#define UART_RXC RXC
#define UART_TXC TXC
#define UART_UDRE UDRE
#define UART_U2X U2X
#define UART_RXEN RXEN
#define UART_TXEN TXEN
#define UART_RXCIE RXCIE
#define UART_UCSZ1 UCSZ1
#define UART_UCSZ0 UCSZ0
#ifdef URSEL
#define UART_URSEL_BIT _BV(URSEL)
#endif
#endif

#ifndef UART_URSEL_BIT
#define UART_URSEL_BIT 0
#endif

#if defined(USART_RX_vect)
#define UART_RX_VECTOR USART_RX_vect
#elif defined(USART0_RX_vect)
#define UART_RX_VECTOR USART0_RX_vect
#else
#define UART_RX_VECTOR USART_RXC_vect
#endif

#if USE_2X
#define UART_KEEP_BITS _BV(UART_U2X)
#else
#define UART_KEEP_BITS 0
#endif

static inline void uart_init(void) {
    /* UBRRH first: on chips where it shares its address with UCSRC, a write with
     * bit 7 clear reaches UBRRH. */
    UART_UBRRH = UBRRH_VALUE;
    UART_UBRRL = UBRRL_VALUE;
    UART_UCSRA = UART_KEEP_BITS;
    UART_UCSRC = UART_URSEL_BIT | _BV(UART_UCSZ1) | _BV(UART_UCSZ0); /* 8N1 */
    UART_UCSRB = _BV(UART_TXEN) | _BV(UART_RXEN);
}

static inline void uart_enable_rx_interrupt(void) { UART_UCSRB |= _BV(UART_RXCIE); }

static inline void uart_putchar(char c) {
    while (!(UART_UCSRA & _BV(UART_UDRE))) {
    }
    UART_UDR = (uint8_t)c;
    /* TXC may still be set from an earlier pause in the output; clearing it after
     * each write means it can only come back once this byte has gone out. */
    UART_UCSRA = UART_KEEP_BITS | _BV(UART_TXC);
}

static inline char uart_getchar(void) {
    while (!(UART_UCSRA & _BV(UART_RXC))) {
    }
    return (char)UART_UDR;
}

static inline void finish(void) {
    sleep_enable();
    cli();
    sleep_cpu();
    for (;;) {
    }
}

#endif /* HOST */

#endif
