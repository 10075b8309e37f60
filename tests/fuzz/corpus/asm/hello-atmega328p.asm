; Sends a text from program memory through USART0 of an ATmega328P, whose registers are
; all in extended I/O (LDS/STS), and sleeps once the last byte is out.
.include "m328Pdef.inc"

.cseg
.org 0
        ldi     r16, high(RAMEND)
        out     SPH, r16
        ldi     r16, low(RAMEND)
        out     SPL, r16
        ldi     r16, (1<<TXEN0)
        sts     UCSR0B, r16
        ldi     ZL, low(text*2)
        ldi     ZH, high(text*2)
next:
        lpm     r17, Z+
        tst     r17
        breq    flush
wait:
        lds     r16, UCSR0A
        sbrs    r16, UDRE0
        rjmp    wait
        ldi     r16, (1<<TXC0)
        sts     UCSR0A, r16
        sts     UDR0, r17
        rjmp    next
flush:
        lds     r16, UCSR0A
        sbrs    r16, TXC0
        rjmp    flush
        sleep

text:
        .db     "328P says hi", 13, 10, 0, 0
