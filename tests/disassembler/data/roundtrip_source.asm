; A program for the listing round trip: every instruction form the disassembler
; writes, branches that all land inside the program, aliases that read back as their
; base form, and two words no instruction has. Assembled by make_roundtrip.sh.
.include "m2560def.inc"
start:
	jmp main
	call sub
	rjmp main
	rcall sub
	.dw 0xffff
	.dw 0x0001
main:
	adc r1, r2
	adc r3, r3
	add r4, r5
	add r6, r6
	adiw r24, 1
	adiw r26, 63
	adiw r28, 10
	adiw r30, 0
	and r7, r8
	and r9, r9
	andi r16, 0xfe
	cbr r17, 0x01
	asr r10
	bclr 0
	clc
	clh
	cli
	cln
	cls
	clt
	clv
	clz
	bld r11, 7
	brcc main
	brcs main
	brlo main
	brsh main
	breq main
	brne main
	brge main
	brlt main
	brhc main
	brhs main
	brid main
	brie main
	brmi main
	brpl main
	brtc main
	brts main
	brvc main
	brvs main
	brbc 3, main
	brbs 6, forward
	break
	bset 7
	sec
	seh
	sei
	sen
	ses
	set
	sev
	sez
	bst r12, 3
	cbi 0x05, 3
	clr r13
	com r14
	cp r15, r16
	cpc r17, r18
	cpi r19, 0x80
	cpse r20, r21
	dec r22
	eicall
	eijmp
	elpm
	elpm r23, Z
	elpm r24, Z+
	eor r25, r26
	fmul r16, r23
	fmuls r17, r22
	fmulsu r18, r21
	icall
	ijmp
	in r0, 0x3f
	in r27, 0x3e
	inc r28
forward:
	ld r1, X
	ld r2, X+
	ld r3, -X
	ld r4, Y
	ld r5, Y+
	ld r6, -Y
	ldd r7, Y+1
	ldd r8, Y+63
	ld r9, Z
	ld r10, Z+
	ld r11, -Z
	ldd r12, Z+32
	ldi r29, 0x12
	ser r30
	lds r31, 0x0100
	lpm
	lpm r0, Z
	lpm r1, Z+
	lsl r2
	lsr r3
	mov r4, r5
	movw r6, r8
	mul r9, r10
	muls r16, r31
	mulsu r19, r20
	neg r11
	nop
	or r12, r13
	ori r20, 0x5a
	sbr r21, 0x80
	out 0x3f, r14
	out 0x05, r15
	pop r16
	push r17
	ret
	reti
	rol r18
	ror r19
	sbc r20, r21
	sbci r22, 0x7f
	sbi 0x1f, 7
	sbic 0x00, 0
	sbis 0x10, 5
	sbiw r24, 33
	sbrc r23, 1
	sbrs r24, 2
	sleep
	spm
	st X, r25
	st X+, r26
	st -X, r27
	st Y, r28
	st Y+, r29
	st -Y, r30
	std Y+2, r31
	st Z, r0
	st Z+, r1
	st -Z, r2
	std Z+62, r3
	sts 0x21ff, r4
	sub r5, r6
	subi r23, 0x01
	swap r7
	tst r8
	wdr
sub:
	rjmp sub
	brne sub
	jmp start
