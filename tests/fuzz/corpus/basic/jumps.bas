' Labels, jumps and hand-written assembler
start:
ASM:loop: INC R20
ASM: LD R21,X+
ASM: ST -Y,R21
ASM: .DB 1,2,3
ASM: BRNE loop
Gosub helper
If_like: Goto done
Break
done: Halt
Goto start
End
helper:
ASM: RCALL inner
Return
ASM:inner: RET
