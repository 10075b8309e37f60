; Echoes every byte it receives until it receives EOT ($04), then waits until the last
; echo has left the shifter and sleeps. Polls the USART of an ATmega8 (URSEL style).
.include "m8def.inc"

.cseg
.org 0
        ldi     r16, 25                 ; 9600 Bd at 4 MHz; the simulator does not care
        out     UBRRL, r16
        ldi     r16, (1<<RXEN)|(1<<TXEN)
        out     UCSRB, r16
        ldi     r16, (1<<URSEL)|(1<<UCSZ1)|(1<<UCSZ0)
        out     UCSRC, r16
        ldi     r18, (1<<TXC)
receive:
        sbis    UCSRA, RXC
        rjmp    receive
        in      r17, UDR
        cpi     r17, 4
        breq    flush
send:
        sbis    UCSRA, UDRE
        rjmp    send
        out     UCSRA, r18              ; clear TXC; it comes back when this byte is out
        out     UDR, r17
        rjmp    receive
flush:
        sbis    UCSRA, TXC
        rjmp    flush
        sleep
