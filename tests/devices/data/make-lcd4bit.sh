#!/bin/sh
# Rebuilds lcd4bit.hex from lcd4bit.asm with avra (an independent assembler).
set -e
cd "$(dirname "$0")"
avra -o lcd4bit.hex lcd4bit.asm >/dev/null
rm -f lcd4bit.obj lcd4bit.eep.hex lcd4bit.cof
