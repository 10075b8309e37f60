#!/usr/bin/env bash
# Compiles each program here, and each program of ../families, with the compatible listing and
# assembles it with avra, with the chip's include file in front, into NAME-MODEL.avra.hex beside
# the program. The test compares those words with what the project's own assembler makes of the
# ordinary listing. LookUp stays out: its table equate names a label further down, which avra
# does not resolve; so ../families/lookup.bas has no HEX here. Interrupt routines on a model
# without SRAM stay out too: their `IN sreg_backup,SREG` names a variable's register by its
# .EQU number, which avra refuses where it wants a register name.
# Usage: make-avra-hex.sh PATH/TO/velmora-cli   (needs avra on the PATH)
set -euo pipefail
cli=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
families=$(cd "$here/../families" && pwd)
build() {  # program model include [folder]
  local from=${4:-$here}
  cp "$from/$1.bas" "$work/$1.bas"
  "$cli" basic --compatible --model "$2" "$work/$1.bas" > /dev/null
  { echo ".include \"$3\""; cat "$work/$1.asm"; } > "$work/$1-$2.asm"
  (cd "$work" && avra "$1-$2.asm" > "$work/avra.log" 2>&1) || { cat "$work/avra.log"; exit 1; }
  cp "$work/$1-$2.hex" "$from/$1-$2.avra.hex"
}
for program in comments declare jumps families; do
  build "$program" ATmega32 m32def.inc
  build "$program" ATmega8 m8def.inc
done
build comments ATtiny13 tn13def.inc
build jumps ATtiny13 tn13def.inc
for program in arithmetic divzero sqr brackets shifts logic arrays loops selectcase ifgoto hserout hserin procedures; do
  build "$program" ATmega328P m328Pdef.inc "$families"
  build "$program" ATmega32 m32def.inc "$families"
done
# Interrupt programs name their model's vectors and registers.
build int0edges ATmega328P m328Pdef.inc "$families"
build rxecho ATmega32 m32def.inc "$families"
