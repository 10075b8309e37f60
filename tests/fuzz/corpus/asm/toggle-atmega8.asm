; Pin trace reference: PB0 and PB1 change at cycles worked out by hand from the
; instruction table (the run starts at cycle 1; SBI and CBI take 2 cycles, a taken
; BRNE 2, SBIW 2). The comments give the cycle count after each instruction.
.include "m8def.inc"
        ldi r16, 0x03           ; 2
        out DDRB, r16           ; 3    PB0 and PB1 outputs, still low
        sbi PORTB, 0            ; 5    PB0 rises
        ldi r17, 10             ; 6
wait1:  dec r17                 ; 10 x 1
        brne wait1              ; 9 x 2 + 1: 35
        sbi PORTB, 1            ; 37   PB1 rises
        cbi PORTB, 0            ; 39   PB0 falls
        ldi r24, low(1000)      ; 40
        ldi r25, high(1000)     ; 41
wait2:  sbiw r24, 1             ; 1000 x 2
        brne wait2              ; 999 x 2 + 1: 4040
        ldi r18, 0              ; 4041
        out PORTB, r18          ; 4042 PB1 falls
        sleep                   ; 4043
