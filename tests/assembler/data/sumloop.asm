; Sums 10 down to 1, doubles it in a subroutine, reads a table from program memory and
; stores through X; asminstructions_test.cpp runs it and checks the registers worked out by hand.
        .EQU COUNT = 10
        .DEF acc = R17
        LDI R16,COUNT
        CLR acc
LOOP:   ADD acc,R16        ; 10 + 9 + ... + 1 = 55
        DEC R16
        BRNE LOOP
        RCALL DOUBLE       ; 110
        LDI ZL,low(TABLE*2)
        LDI ZH,high(TABLE*2)
        LPM R18,Z+
        LPM R19,Z
        LDI XL,low($0100)
        LDI XH,high($0100)
        ST X+,R18
        LDS R20,$0100
        SLEEP
DOUBLE: LSL acc
        RET
TABLE:  .DB $AB,"z"
