' Declarations of every kind, used from assembler rows
Dim counter As Byte
Dim total As Word
Dim big As Long
Dim table(8) As Byte
Dim words(4) As Word
Dim flag As Bit
Dim fixed As Byte @ 0x100
Reserve 0x101
Symbol led = PORTB.0
Symbol outport = PORTB
Const limit = 200
ASM: LDI R17,200
ASM: STS big,R17
ASM: STS table+3,R17
ASM: STS fixed,R17
ASM: LDS R18,words
Gosub store
End
store: ASM: STS total,R18
Return
