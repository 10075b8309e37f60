#!/usr/bin/env bash
# Compiles each program here with the compatible listing and assembles it with avra, with the
# chip's include file in front, into NAME-MODEL.avra.hex. The test compares those words with
# what the project's own assembler makes of the ordinary listing. LookUp stays out: its table
# equate names a label further down, which avra does not resolve.
# Usage: make-avra-hex.sh PATH/TO/velmora-cli   (needs avra on the PATH)
set -euo pipefail
cli=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build() {  # program model include
  cp "$here/$1.bas" "$work/$1.bas"
  "$cli" basic --compatible --model "$2" "$work/$1.bas" > /dev/null
  { echo ".include \"$3\""; cat "$work/$1.asm"; } > "$work/$1-$2.asm"
  (cd "$work" && avra "$1-$2.asm" > "$work/avra.log" 2>&1) || { cat "$work/avra.log"; exit 1; }
  cp "$work/$1-$2.hex" "$here/$1-$2.avra.hex"
}
for program in comments declare jumps families; do
  build "$program" ATmega32 m32def.inc
  build "$program" ATmega8 m8def.inc
done
build comments ATtiny13 tn13def.inc
build jumps ATtiny13 tn13def.inc
