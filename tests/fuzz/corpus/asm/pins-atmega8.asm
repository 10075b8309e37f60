; Sends "H" once PB0 reads high, then "L" once it reads low again, then sleeps when the
; last byte is out. ATmega8.
.include "m8def.inc"

.cseg
.org 0
        ldi     r16, high(RAMEND)
        out     SPH, r16
        ldi     r16, low(RAMEND)
        out     SPL, r16
        ldi     r16, (1<<TXEN)
        out     UCSRB, r16
        ldi     r18, (1<<TXC)
high:
        sbis    PINB, 0
        rjmp    high
        ldi     r17, 'H'
        rcall   send
low:
        sbic    PINB, 0
        rjmp    low
        ldi     r17, 'L'
        rcall   send
flush:
        sbis    UCSRA, TXC
        rjmp    flush
        sleep

send:
        sbis    UCSRA, UDRE
        rjmp    send
        out     UCSRA, r18
        out     UDR, r17
        ret
