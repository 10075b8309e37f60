; sixteen bytes
START: LDI R16,$FF
        OUT PORTB,R16
        .DW $1234,$5678
        LDS R1,$0100
        NOP
        RJMP START
