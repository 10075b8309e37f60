; Every mnemonic with boundary operands; made by make-avra-corpus.py
    ADC R0,R31
    ADC R31,R0
    ADC R16,R15
    ADC R1,R17
    ADD R0,R31
    ADD R31,R0
    ADD R16,R15
    ADD R1,R17
    AND R0,R31
    AND R31,R0
    AND R16,R15
    AND R1,R17
    CP R0,R31
    CP R31,R0
    CP R16,R15
    CP R1,R17
    CPC R0,R31
    CPC R31,R0
    CPC R16,R15
    CPC R1,R17
    CPSE R0,R31
    CPSE R31,R0
    CPSE R16,R15
    CPSE R1,R17
    EOR R0,R31
    EOR R31,R0
    EOR R16,R15
    EOR R1,R17
    MOV R0,R31
    MOV R31,R0
    MOV R16,R15
    MOV R1,R17
    MUL R0,R31
    MUL R31,R0
    MUL R16,R15
    MUL R1,R17
    OR R0,R31
    OR R31,R0
    OR R16,R15
    OR R1,R17
    SBC R0,R31
    SBC R31,R0
    SBC R16,R15
    SBC R1,R17
    SUB R0,R31
    SUB R31,R0
    SUB R16,R15
    SUB R1,R17
    ROL R0
    ROL R31
    ROL R17
    LSL R0
    LSL R31
    LSL R17
    TST R0
    TST R31
    TST R17
    CLR R0
    CLR R31
    CLR R17
    ASR R0
    ASR R31
    ASR R17
    COM R0
    COM R31
    COM R17
    DEC R0
    DEC R31
    DEC R17
    INC R0
    INC R31
    INC R17
    LSR R0
    LSR R31
    LSR R17
    NEG R0
    NEG R31
    NEG R17
    POP R0
    POP R31
    POP R17
    PUSH R0
    PUSH R31
    PUSH R17
    ROR R0
    ROR R31
    ROR R17
    SWAP R0
    SWAP R31
    SWAP R17
    SER R16
    SER R31
    ANDI R16,0
    ANDI R31,255
    ANDI R20,$A5
    ANDI R23,1
    CPI R16,0
    CPI R31,255
    CPI R20,$A5
    CPI R23,1
    LDI R16,0
    LDI R31,255
    LDI R20,$A5
    LDI R23,1
    ORI R16,0
    ORI R31,255
    ORI R20,$A5
    ORI R23,1
    SBR R16,0
    SBR R31,255
    SBR R20,$A5
    SBR R23,1
    SBCI R16,0
    SBCI R31,255
    SBCI R20,$A5
    SBCI R23,1
    SUBI R16,0
    SUBI R31,255
    SUBI R20,$A5
    SUBI R23,1
    CBR R16,0
    CBR R31,255
    CBR R20,$A5
    CBR R23,1
    BLD R0,0
    BLD R31,7
    BLD R9,3
    BST R0,0
    BST R31,7
    BST R9,3
    SBRC R0,0
    SBRC R31,7
    SBRC R9,3
    SBRS R0,0
    SBRS R31,7
    SBRS R9,3
    BCLR 0
    BCLR 7
    BSET 0
    BSET 7
    MULS R16,R31
    MULS R31,R16
    MULSU R16,R23
    MULSU R23,R16
    FMUL R16,R23
    FMUL R23,R16
    FMULS R16,R23
    FMULS R23,R16
    FMULSU R16,R23
    FMULSU R23,R16
    MOVW R0,R30
    MOVW R30,R0
    MOVW R24,R2
    ADIW R24,0
    ADIW R26,63
    ADIW R28,32
    ADIW R30,15
    SBIW R24,0
    SBIW R26,63
    SBIW R28,32
    SBIW R30,15
    IN R0,0
    IN R31,63
    IN R16,$2A
    OUT 0,R0
    OUT 63,R31
    OUT $2A,R16
    CBI 0,0
    CBI 31,7
    CBI 17,2
    SBIC 0,0
    SBIC 31,7
    SBIC 17,2
    SBI 0,0
    SBI 31,7
    SBI 17,2
    SBIS 0,0
    SBIS 31,7
    SBIS 17,2
    LDS R0,0
    LDS R31,65535
    LDS R16,$1234
    STS 0,R0
    STS 65535,R31
    STS $1234,R16
    JMP 0
    JMP $3FFFFF
    JMP $12345
    JMP $10000
    CALL 0
    CALL $3FFFFF
    CALL $12345
    CALL $10000
    BREAK
    CLC
    CLH
    CLI
    CLN
    CLS
    CLT
    CLV
    CLZ
    EICALL
    EIJMP
    ICALL
    IJMP
    NOP
    RET
    RETI
    SEC
    SEH
    SEI
    SEN
    SES
    SET
    SEV
    SEZ
    SLEEP
    SPM
    WDR
    LD R0,X
    LD R25,X
    ST X,R0
    ST X,R25
    LD R0,X+
    LD R25,X+
    ST X+,R0
    ST X+,R25
    LD R0,-X
    LD R25,-X
    ST -X,R0
    ST -X,R25
    LD R0,Y
    LD R25,Y
    ST Y,R0
    ST Y,R25
    LD R0,Y+
    LD R25,Y+
    ST Y+,R0
    ST Y+,R25
    LD R0,-Y
    LD R25,-Y
    ST -Y,R0
    ST -Y,R25
    LD R0,Z
    LD R25,Z
    ST Z,R0
    ST Z,R25
    LD R0,Z+
    LD R25,Z+
    ST Z+,R0
    ST Z+,R25
    LD R0,-Z
    LD R25,-Z
    ST -Z,R0
    ST -Z,R25
    LPM
    LPM R0,Z
    LPM R29,Z
    LPM R0,Z+
    LPM R29,Z+
    ELPM
    ELPM R0,Z
    ELPM R29,Z
    ELPM R0,Z+
    ELPM R29,Z+
    LDD R0,Y+0
    LDD R31,Y+63
    LDD R5,Y+32
    LDD R6,Y+24
    LDD R7,Y+7
    STD Y+0,R0
    STD Y+63,R31
    STD Y+32,R5
    STD Y+24,R6
    STD Y+7,R7
    LDD R0,Z+0
    LDD R31,Z+63
    LDD R5,Z+32
    LDD R6,Z+24
    LDD R7,Z+7
    STD Z+0,R0
    STD Z+63,R31
    STD Z+32,R5
    STD Z+24,R6
    STD Z+7,R7
BK0: NOP
BK1: NOP
BK2: NOP
BK3: NOP
BK4: NOP
BK5: NOP
BK6: NOP
BK7: NOP
BK8: NOP
BK9: NOP
BK10: NOP
BK11: NOP
BK12: NOP
BK13: NOP
BK14: NOP
BK15: NOP
BK16: NOP
BK17: NOP
BK18: NOP
BK19: NOP
BK20: NOP
BK21: NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    BRCS BK0
    BRLO BK1
    BREQ BK2
    BRMI BK3
    BRVS BK4
    BRLT BK5
    BRHS BK6
    BRTS BK7
    BRIE BK8
    BRCC BK9
    BRSH BK10
    BRNE BK11
    BRPL BK12
    BRVC BK13
    BRGE BK14
    BRHC BK15
    BRTC BK16
    BRID BK17
    BRBS 0,BK18
    BRBS 7,BK19
    BRBC 0,BK20
    BRBC 7,BK21
    BRCS FW0
    BRLO FW1
    BREQ FW2
    BRMI FW3
    BRVS FW4
    BRLT FW5
    BRHS FW6
    BRTS FW7
    BRIE FW8
    BRCC FW9
    BRSH FW10
    BRNE FW11
    BRPL FW12
    BRVC FW13
    BRGE FW14
    BRHC FW15
    BRTC FW16
    BRID FW17
    BRBS 0,FW18
    BRBS 7,FW19
    BRBC 0,FW20
    BRBC 7,FW21
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
    NOP
FW0: NOP
FW1: NOP
FW2: NOP
FW3: NOP
FW4: NOP
FW5: NOP
FW6: NOP
FW7: NOP
FW8: NOP
FW9: NOP
FW10: NOP
FW11: NOP
FW12: NOP
FW13: NOP
FW14: NOP
FW15: NOP
FW16: NOP
FW17: NOP
FW18: NOP
FW19: NOP
FW20: NOP
FW21: NOP
    .ORG $1000
RL0: NOP
RL1: NOP
    .ORG $17FF
    RJMP RL0
    RCALL RL1
    RJMP RF0
    RCALL RF1
    .ORG $2001
RF0: NOP
RF1: NOP
