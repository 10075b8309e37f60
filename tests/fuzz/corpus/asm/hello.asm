; hello.asm - the first program to watch in Velmora, for the default model ATmega32.
;
; Counts upwards on PORTB (watch PB0..PB7 in Tools, Microcontroller View, or the register
; list) and copies the inputs of PORTD to PORTC, so a click on a "T" button of a PD pin
; shows on the PC pin of the same number. It runs until Stop.
;
; Build (avra 1.4): ./make-hello.sh, which runs  avra -o hello.hex hello.asm

.device ATmega32

.equ PIND  = 0x10
.equ DDRC  = 0x14
.equ PORTC = 0x15
.equ DDRB  = 0x17
.equ PORTB = 0x18
.equ SPL   = 0x3D
.equ SPH   = 0x3E
.equ RAMEND = 0x085F

.def counter = r16
.def temp    = r17
.def outer   = r18
.def inner   = r19

.cseg
.org 0
reset:
        ldi     temp, low(RAMEND)
        out     SPL, temp
        ldi     temp, high(RAMEND)
        out     SPH, temp
        ser     temp
        out     DDRB, temp              ; PORTB and PORTC drive their pins
        out     DDRC, temp
        clr     counter

loop:
        out     PORTB, counter
        inc     counter
        in      temp, PIND
        out     PORTC, temp
        rcall   delay
        rjmp    loop

; About 7,700 cycles, a little under 2 ms at 4 MHz.
delay:
        ldi     outer, 10
delay_outer:
        ldi     inner, 0
delay_inner:
        dec     inner
        brne    delay_inner
        dec     outer
        brne    delay_outer
        ret
