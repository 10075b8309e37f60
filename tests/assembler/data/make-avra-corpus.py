#!/usr/bin/env python3
"""Writes corpus.asm, every mnemonic with boundary operands in the syntax that both this
assembler and avra accept, and assembles it with avra into corpus-avra.hex.

Run from this folder: python3 make-avra-corpus.py  (needs avra on the PATH).
The test compares the program words of both assemblers address by address."""

import os
import subprocess
import sys

TWO_REG = ["ADC", "ADD", "AND", "CP", "CPC", "CPSE", "EOR", "MOV", "MUL", "OR", "SBC", "SUB"]
ONE_REG = ["ROL", "LSL", "TST", "CLR", "ASR", "COM", "DEC", "INC", "LSR", "NEG", "POP", "PUSH", "ROR", "SWAP"]
REG_IMM = ["ANDI", "CPI", "LDI", "ORI", "SBR", "SBCI", "SUBI", "CBR"]
REG_BIT = ["BLD", "BST", "SBRC", "SBRS"]
IO_BIT = ["CBI", "SBIC", "SBI", "SBIS"]
MUL_LOW = ["MULSU", "FMUL", "FMULS", "FMULSU"]
FIXED = ["BREAK", "CLC", "CLH", "CLI", "CLN", "CLS", "CLT", "CLV", "CLZ", "EICALL", "EIJMP", "ICALL", "IJMP",
         "NOP", "RET", "RETI", "SEC", "SEH", "SEI", "SEN", "SES", "SET", "SEV", "SEZ", "SLEEP", "SPM", "WDR"]
BRANCHES = ["BRCS", "BRLO", "BREQ", "BRMI", "BRVS", "BRLT", "BRHS", "BRTS", "BRIE", "BRCC", "BRSH", "BRNE",
            "BRPL", "BRVC", "BRGE", "BRHC", "BRTC", "BRID"]
POINTERS = ["X", "X+", "-X", "Y", "Y+", "-Y", "Z", "Z+", "-Z"]


def statements():
    s = []
    for m in TWO_REG:
        s += [f"{m} R0,R31", f"{m} R31,R0", f"{m} R16,R15", f"{m} R1,R17"]
    for m in ONE_REG:
        s += [f"{m} R0", f"{m} R31", f"{m} R17"]
    s += ["SER R16", "SER R31"]
    for m in REG_IMM:
        s += [f"{m} R16,0", f"{m} R31,255", f"{m} R20,$A5", f"{m} R23,1"]
    for m in REG_BIT:
        s += [f"{m} R0,0", f"{m} R31,7", f"{m} R9,3"]
    s += ["BCLR 0", "BCLR 7", "BSET 0", "BSET 7"]
    s += ["MULS R16,R31", "MULS R31,R16"]
    for m in MUL_LOW:
        s += [f"{m} R16,R23", f"{m} R23,R16"]
    s += ["MOVW R0,R30", "MOVW R30,R0", "MOVW R24,R2"]
    for m in ["ADIW", "SBIW"]:
        s += [f"{m} R24,0", f"{m} R26,63", f"{m} R28,32", f"{m} R30,15"]
    s += ["IN R0,0", "IN R31,63", "IN R16,$2A", "OUT 0,R0", "OUT 63,R31", "OUT $2A,R16"]
    for m in IO_BIT:
        s += [f"{m} 0,0", f"{m} 31,7", f"{m} 17,2"]
    s += ["LDS R0,0", "LDS R31,65535", "LDS R16,$1234", "STS 0,R0", "STS 65535,R31", "STS $1234,R16"]
    for m in ["JMP", "CALL"]:
        s += [f"{m} 0", f"{m} $3FFFFF", f"{m} $12345", f"{m} $10000"]
    s += FIXED
    for p in POINTERS:
        s += [f"LD R0,{p}", f"LD R25,{p}", f"ST {p},R0", f"ST {p},R25"]
    for m in ["LPM", "ELPM"]:
        s += [m, f"{m} R0,Z", f"{m} R29,Z", f"{m} R0,Z+", f"{m} R29,Z+"]
    for p in ["Y", "Z"]:
        s += [f"LDD R0,{p}+0", f"LDD R31,{p}+63", f"LDD R5,{p}+32", f"LDD R6,{p}+24", f"LDD R7,{p}+7"]
        s += [f"STD {p}+0,R0", f"STD {p}+63,R31", f"STD {p}+32,R5", f"STD {p}+24,R6", f"STD {p}+7,R7"]
    return s


def short_branches():
    """Each conditional branch once 64 words back and once 63 words forward, at the limits."""
    names = BRANCHES + ["BRBS 0,", "BRBS 7,", "BRBC 0,", "BRBC 7,"]
    n = len(names)
    lines = []
    lines += [f"BK{i}: NOP" for i in range(n)]
    lines += ["    NOP"] * (63 - n)
    for i, name in enumerate(names):
        target = f"BK{i}"
        lines.append(f"    {name}{target}" if name.endswith(",") else f"    {name} {target}")
    for i, name in enumerate(names):
        target = f"FW{i}"
        lines.append(f"    {name}{target}" if name.endswith(",") else f"    {name} {target}")
    lines += ["    NOP"] * (63 - n + 1)
    lines += [f"FW{i}: NOP" for i in range(n)]
    return lines


def long_jumps():
    """RJMP and RCALL at -2048 and +2047 words, placed with .ORG."""
    return [
        "    .ORG $1000",
        "RL0: NOP",
        "RL1: NOP",
        "    .ORG $17FF",
        "    RJMP RL0",
        "    RCALL RL1",
        "    RJMP RF0",
        "    RCALL RF1",
        "    .ORG $2001",
        "RF0: NOP",
        "RF1: NOP",
    ]


def main():
    lines = ["; Every mnemonic with boundary operands; made by make-avra-corpus.py"]
    lines += ["    " + s for s in statements()]
    lines += short_branches()
    lines += long_jumps()
    with open("corpus.asm", "w", newline="\r\n") as f:
        f.write("\n".join(lines) + "\n")
    result = subprocess.run(["avra", "-o", "corpus-avra.hex", "corpus.asm"], capture_output=True, text=True)
    sys.stdout.write(result.stdout)
    sys.stderr.write(result.stderr)
    for leftover in ["corpus.eep.hex", "corpus.obj", "corpus.hex"]:
        if os.path.exists(leftover):
            os.remove(leftover)
    return result.returncode


if __name__ == "__main__":
    sys.exit(main())
