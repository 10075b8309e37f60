; Sends "OK" and a line break through the classic UART of an AT90S2313 (UCR, USR) and
; sleeps once the last byte is out.
.include "2313def.inc"

.cseg
.org 0
        ldi     r16, RAMEND
        out     SPL, r16
        ldi     r16, (1<<TXEN)
        out     UCR, r16
        ldi     r18, (1<<TXC)
        ldi     r17, 'O'
        rcall   send
        ldi     r17, 'K'
        rcall   send
        ldi     r17, 10
        rcall   send
flush:
        sbis    USR, TXC
        rjmp    flush
        sleep

send:
        sbis    USR, UDRE
        rjmp    send
        out     USR, r18
        out     UDR, r17
        ret
