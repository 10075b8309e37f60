#!/usr/bin/env python3
"""Writes encodings.txt, the expected words of every statement in the encoding test, as
avr-as (binutils) assembles each one: "STATEMENT = WORD [WORD]", "#" lines name the family.

Run: python3 make-encoding-table.py > encodings.txt  (needs avr-as, avr-ld and avr-objcopy).
Relative operands are written as plain word offsets (RJMP 5) and become ".+10" for avr-as;
JMP and CALL take word addresses and become byte addresses."""

import os
import re
import subprocess
import tempfile

FAMILIES = {
    "RegReg": ["ADC R0,R31", "ADD R31,R0", "AND R16,R15", "CP R1,R17", "CPC R5,R10", "CPSE R31,R31",
               "EOR R2,R3", "MOV R30,R1", "MUL R0,R0", "OR R17,R16", "SBC R15,R16", "SUB R8,R24"],
    "RegSelf": ["ROL R0", "LSL R31", "TST R16", "CLR R15"],
    "Reg": ["ASR R0", "COM R31", "DEC R16", "INC R15", "LSR R1", "NEG R30", "POP R0", "PUSH R31",
            "ROR R17", "SWAP R9"],
    "RegImmediate": ["SER R16", "SER R31", "ANDI R16,0", "CPI R31,255", "LDI R20,$A5", "ORI R23,1",
                     "SBR R17,$80", "SBCI R30,$0F", "SUBI R16,$F0", "CBR R16,0", "CBR R31,255",
                     "CBR R16,1"],
    "RegBit": ["BLD R0,0", "BST R31,7", "SBRC R9,3", "SBRS R16,5", "BCLR 0", "BCLR 7", "BSET 0", "BSET 7"],
    "Multiply": ["MULS R16,R31", "MULS R31,R16", "MULSU R16,R23", "MULSU R23,R16", "FMUL R16,R23",
                 "FMULS R23,R16", "FMULSU R17,R22", "MOVW R0,R30", "MOVW R30,R0", "MOVW R24,R2"],
    "WordImmediate": ["ADIW R24,0", "ADIW R26,63", "ADIW R28,32", "ADIW R30,15", "SBIW R24,63",
                      "SBIW R26,0", "SBIW R28,16", "SBIW R30,47"],
    "Io": ["IN R0,0", "IN R31,63", "IN R16,$2A", "OUT 0,R0", "OUT 63,R31", "OUT $2A,R16",
           "CBI 0,0", "SBIC 31,7", "SBI 17,2", "SBIS 5,5"],
    "Direct": ["LDS R0,0", "LDS R31,65535", "LDS R16,$1234", "STS 0,R0", "STS 65535,R31", "STS $1234,R16",
               "JMP 0", "JMP $3FFFFF", "JMP $12345", "CALL $10000", "CALL $1FFFF", "CALL 1000"],
    "Relative": ["RJMP 0", "RJMP 2047", "RJMP -2048", "RJMP -1", "RCALL 5", "RCALL -5",
                 "BRCS 63", "BRLO -64", "BREQ 1", "BRMI -1", "BRVS 10", "BRLT -10", "BRHS 0", "BRTS 32",
                 "BRIE -32", "BRCC 63", "BRSH -64", "BRNE -2", "BRPL 2", "BRVC 7", "BRGE -7", "BRHC 20",
                 "BRTC -20", "BRID 3", "BRBS 0,63", "BRBS 7,-64", "BRBC 3,5", "BRBC 7,-1"],
    "Fixed": ["BREAK", "CLC", "CLH", "CLI", "CLN", "CLS", "CLT", "CLV", "CLZ", "EICALL", "EIJMP", "ICALL",
              "IJMP", "NOP", "RET", "RETI", "SEC", "SEH", "SEI", "SEN", "SES", "SET", "SEV", "SEZ", "SLEEP",
              "SPM", "WDR"],
    "Pointer": ["LD R0,X", "LD R31,X+", "LD R1,-X", "LD R2,Y", "LD R3,Y+", "LD R4,-Y", "LD R5,Z", "LD R6,Z+",
                "LD R7,-Z", "ST X,R0", "ST X+,R31", "ST -X,R1", "ST Y,R2", "ST Y+,R3", "ST -Y,R4", "ST Z,R5",
                "ST Z+,R6", "ST -Z,R7", "LPM", "ELPM", "LPM R0,Z", "LPM R31,Z+", "ELPM R16,Z", "ELPM R1,Z+",
                "LDD R0,Y+0", "LDD R31,Y+63", "LDD R5,Z+32", "LDD R6,Z+24", "LDD R7,Y+7", "STD Y+0,R0",
                "STD Z+63,R31", "STD Y+32,R5", "STD Z+24,R6", "STD Z+7,R7"],
}

RELATIVE = {"RJMP", "RCALL", "BRBS", "BRBC"} | {s.split()[0] for s in FAMILIES["Relative"]}


def for_avr_as(statement):
    parts = statement.split(None, 1)
    mnemonic = parts[0]
    operands = parts[1].split(",") if len(parts) > 1 else []
    operands = [re.sub(r"^\$", "0x", o) for o in operands]
    if mnemonic in RELATIVE:
        k = int(operands[-1])
        operands[-1] = f".{2 * k:+d}"
    if mnemonic in ("JMP", "CALL"):
        operands[0] = str(2 * int(operands[0], 0))
    return mnemonic.lower() + (" " + ", ".join(operands) if operands else "")


def words(statements):
    with tempfile.TemporaryDirectory() as folder:
        source = os.path.join(folder, "t.s")
        with open(source, "w") as f:
            for s in statements:
                f.write(for_avr_as(s) + "\n")
        obj = os.path.join(folder, "t.o")
        subprocess.run(["avr-as", "-mmcu=avr6", "-o", obj, source], check=True)
        # Linked at address 0, so that relative and absolute targets are resolved.
        elf = os.path.join(folder, "t.elf")
        subprocess.run(["avr-ld", "-mavr6", "-Ttext=0", "-o", elf, obj], check=True)
        binary = os.path.join(folder, "t.bin")
        subprocess.run(["avr-objcopy", "-O", "binary", "-j", ".text", elf, binary], check=True)
        data = open(binary, "rb").read()
    result = []
    at = 0
    for s in statements:
        count = 2 if s.split()[0] in ("LDS", "STS", "JMP", "CALL") else 1
        result.append([data[at + 2 * i] | data[at + 2 * i + 1] << 8 for i in range(count)])
        at += 2 * count
    return result


def main():
    for family, statements in FAMILIES.items():
        print(f"# {family}")
        for s, w in zip(statements, words(statements)):
            print(s + " = " + " ".join(f"{x:04X}" for x in w))


if __name__ == "__main__":
    main()
