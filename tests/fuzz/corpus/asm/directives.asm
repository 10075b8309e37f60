.def temp = r16
.set count = 3
start: ldi temp, LOW(count*2)
 ldi r17, HIGH($1234)
.org 0x20
.db "ab", 1, $ff
.dw start, -1
 ld r0, Y+
 std Z+63, r1
 rjmp start
.include "m32def.inc"
.exit
