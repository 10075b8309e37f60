#!/bin/bash
# Regenerates objdump_words.txt.gz: avr-objdump's reading of every 16-bit word.
#
# Each word 0000..FFFF is written to a raw image followed by the fixed second word
# 5A3C, so a two-word instruction (CALL, JMP, LDS, STS) takes 5A3C as its operand and
# every word starts at a byte address that is a multiple of 4. The output keeps one
# line per word, line N+1 for word N: objdump's mnemonic and operands as printed
# (comments after ";" dropped, blanks collapsed). Needs binutils-avr and python3.
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
    texts[address // 4] = " ".join(body.replace("\t", " ").split())
assert len(texts) == 65536, len(texts)
with open(sys.argv[2], "w") as out:
    for w in range(65536):
        out.write(texts[w] + "\n")
PY

gzip -9nc "$work/objdump_words.txt" > "$here/objdump_words.txt.gz"
echo "wrote $here/objdump_words.txt.gz"
