; errors
        LDI R15,256
DUP:    NOP
DUP:    NOP
        BOGUS
        .EQU X
        NOP
