; Code and data with gaps between them, one piece above 64 KiB of flash.
.device ATmega128
.equ    DDRB  = 0x17            ; I/O addresses from avr-libc's iom128.h
.equ    PORTB = 0x18

.cseg
.org 0x0000
        rjmp    start
.org 0x0030
start:
        ldi     r16, 0xFF
        out     DDRB, r16
loop:
        inc     r17
        out     PORTB, r17
        rjmp    loop

.org 0x0101
table:
        .db     1, 2, 3, 4, 5, 6

.org 0x7FFC
        .dw     0x1234, 0x5678, 0x9ABC, 0xDEF0, 0x0F1E, 0x2D3C

.org 0x9000
        nop
        jmp     start
        .dw     0xBEEF
