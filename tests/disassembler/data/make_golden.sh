#!/bin/bash
# Regenerates objdump_words.txt.gz: avr-objdump's reading of every 16-bit word, in the
# disassembler's notation.
#
# Each word 0000..FFFF is written to a raw image followed by the fixed second word
# 5A3C, so a two-word instruction (CALL, JMP, LDS, STS) takes 5A3C as its operand and
# every word starts at a byte address that is a multiple of 4. The output keeps one
# line per word, line N+1 for word N: objdump's mnemonic and operands (comments after
# ";" dropped) brought into our notation: mnemonics upper case, no blank after a comma,
# registers 26..31 as XL..ZH, the ADIW/SBIW pair and the MOVW pairs written out,
# immediates as "$" and two digits, the ADIW/SBIW constant in decimal, I/O addresses as
# "$" and three digits (a machine that names no registers), LDS/STS addresses as "$"
# and four digits, CALL/JMP byte addresses halved to word addresses, relative offsets
# ".+N" halved to signed word counts, ".word" as UNRECOGNIZED. Needs binutils-avr and
# python3.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

python3 - "$work/words.bin" <<'PY'
import struct, sys
with open(sys.argv[1], "wb") as f:
    for w in range(65536):
        f.write(struct.pack("<HH", w, 0x5A3C))
PY

avr-objdump -D -b binary -m avr:6 "$work/words.bin" > "$work/words.dis"

python3 - "$work/words.dis" "$work/objdump_words.txt" <<'PY'
import re, sys
HALVES = ["XL", "XH", "YL", "YH", "ZL", "ZH"]

def reg(n):
    return HALVES[n - 26] if n >= 26 else "R%d" % n

def operand(mnemonic, text):
    if len(text) > 1 and text[0] == "r" and text[1].isdigit():
        n = int(text[1:])
        if mnemonic in ("ADIW", "SBIW"):
            return reg(n + 1) + ":" + reg(n)
        if mnemonic == "MOVW":
            return "R%d:R%d" % (n + 1, n)
        return reg(n)
    if text.startswith(".+") or text.startswith(".-"):
        count = int(text[2:]) // 2
        return str(-count if text[1] == "-" else count)
    if text.startswith("0x"):
        value = int(text[2:], 16)
        if mnemonic in ("ADIW", "SBIW"):
            return str(value)
        if mnemonic in ("IN", "OUT", "SBI", "CBI", "SBIC", "SBIS"):
            return "$%03X" % value
        if mnemonic in ("LDS", "STS"):
            return "$%04X" % value
        if mnemonic in ("CALL", "JMP"):
            return "$%0*X" % (6 if value // 2 > 0xFFFF else 4, value // 2)
        return "$%02X" % value
    return text  # bit numbers, pointer forms

def normalise(objdump):
    if objdump.startswith(".word"):
        return "UNRECOGNIZED"
    mnemonic, _, rest = objdump.partition(" ")
    mnemonic = mnemonic.upper()
    operands = [operand(mnemonic, piece.lstrip(" ")) for piece in rest.split(",")] if rest else []
    return mnemonic + (" " + ",".join(operands) if operands else "")

line_re = re.compile(r"^\s*([0-9a-f]+):\t(?:[0-9a-f]{2} )+\s*\t(.*)$")
texts = {}
for line in open(sys.argv[1]):
    m = line_re.match(line.rstrip("\n"))
    if not m:
        continue
    address = int(m.group(1), 16)
    if address % 4:
        continue
    body = m.group(2)
    body = body.split(";")[0]
    texts[address // 4] = normalise(" ".join(body.replace("\t", " ").split()))
assert len(texts) == 65536, len(texts)
with open(sys.argv[2], "w") as out:
    for w in range(65536):
        out.write(texts[w] + "\n")
PY

gzip -9nc "$work/objdump_words.txt" > "$here/objdump_words.txt.gz"
echo "wrote $here/objdump_words.txt.gz"
