; Compiled with: Velmora v0.1
; Microcontroller model: ATmega32
; Clock frequency: 4.0 MHz
; Begin
.ORG    0x000000
	CLR R15
	LDI R16,low RAMEND
	OUT SPL,R16
	LDI R16,high RAMEND
	OUT SPH,R16
; Begin of program
; 1:  ' A comment only
; 2: 
; 3:  ' an indented one
; End of program
L0001:	RJMP L0001
; End of listing
.END