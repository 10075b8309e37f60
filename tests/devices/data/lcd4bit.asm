; Drives a 2 x 16 character LCD in 4-bit mode on PORTB of an ATmega32 at 4 MHz:
; D4..D7 on PB4..PB7, RS on PB3, E on PB2, R/W on PB1. The start follows the data sheet's
; initialisation by instruction with fixed waits; every later byte waits on the busy flag.
.equ PINB = 0x16
.equ DDRB = 0x17
.equ PORTB = 0x18
.equ SPL = 0x3D
.equ SPH = 0x3E
.def tmp = r16
.def arg = r17
.def rsbit = r19
.def ZL = r30
.def ZH = r31
.device ATmega32

.org 0
        ldi tmp, 0x5F
        out SPL, tmp
        ldi tmp, 0x08
        out SPH, tmp
        ldi tmp, 0xFE            ; PB1..PB7 outputs
        out DDRB, tmp
        clr rsbit
        clr tmp
        out PORTB, tmp
        rcall wait2ms            ; power-on busy time
        ldi arg, 0x30
        rcall nibble
        rcall wait2ms
        ldi arg, 0x30
        rcall nibble
        rcall wait100
        ldi arg, 0x30
        rcall nibble
        rcall wait100
        ldi arg, 0x20            ; four-bit interface from here on
        rcall nibble
        rcall wait100
        ldi arg, 0x28            ; two lines, 5 x 8 dots
        rcall command
        ldi arg, 0x0C            ; display on, cursor off
        rcall command
        ldi arg, 0x01            ; clear
        rcall command
        ldi arg, 0x06            ; entry mode: increment
        rcall command
        ldi ZL, low(line1 * 2)
        ldi ZH, high(line1 * 2)
        rcall print
        ldi arg, 0xC0            ; second line
        rcall command
        ldi ZL, low(line2 * 2)
        ldi ZH, high(line2 * 2)
        rcall print
        sleep

; Writes the zero-terminated text at Z.
print:  lpm arg, Z+
        tst arg
        breq printed
        rcall data
        rjmp print
printed:
        ret

command:
        clr rsbit
        rjmp write
data:   ldi rsbit, 0x08
write:  rcall waitbusy
        rcall nibble
        swap arg
        rcall nibble
        ret

; Puts the high nibble of arg on D4..D7 with RS and strobes E.
nibble: mov tmp, arg
        andi tmp, 0xF0
        or tmp, rsbit
        out PORTB, tmp
        sbi PORTB, 2
        cbi PORTB, 2
        ret

; Reads the busy flag until it clears: data lines in, RS low, R/W high, two strobes per read.
waitbusy:
        ldi tmp, 0x0E
        out DDRB, tmp
        ldi tmp, 0x02
        out PORTB, tmp
busyloop:
        sbi PORTB, 2
        nop
        in r20, PINB
        cbi PORTB, 2
        sbi PORTB, 2
        nop
        cbi PORTB, 2
        sbrc r20, 7
        rjmp busyloop
        clr tmp
        out PORTB, tmp
        ldi tmp, 0xFE
        out DDRB, tmp
        ret

wait2ms:                         ; 2000 x 4 cycles
        ldi r24, low(2000)
        ldi r25, high(2000)
        rjmp waitloop
wait100:                         ; 100 x 4 cycles
        ldi r24, 100
        ldi r25, 0
waitloop:
        sbiw r24, 1
        brne waitloop
        ret

line1:  .db "Hello, Velmora!", 0
line2:  .db "LCD 4-bit test", 0, 0
