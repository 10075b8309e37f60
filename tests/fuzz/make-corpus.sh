#!/usr/bin/env bash
# Writes the seed corpora of corpus/NAME from files the project ships or tests with, plus a
# few hand-made inputs for corners the shipped files never show. Seeds only start the search:
# libFuzzer keeps what it finds in build-fuzz/corpus, not here.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
top=$(cd "$here/../.." && pwd)
corpus="$here/corpus"
rm -rf "$corpus"
mkdir -p "$corpus"/{hex,asm,disasm,model,settings,cli,basic,elf}

# HEX images: the examples, the reader's test images, and ATmega32 firmware of every kind.
cp "$top/data/examples/hello.hex" "$top/tests/image/data/small.hex" "$top/tests/image/data/holes.hex" "$corpus/hex/"
for f in "$top"/tests/cli/data/*.hex "$top"/tests/firmware/hex/*-atmega32.hex; do cp "$f" "$corpus/hex/"; done
printf ':020000021000EC\n:0100000055AA\n:00000001FF\n' > "$corpus/hex/segment.hex"
printf ':020000040001F9\n:0400000001020304F2\n:00000001FF\n' > "$corpus/hex/linear.hex"
printf ':0300000001020309\n:10000000\n0102\n:00000001FF\n' > "$corpus/hex/damaged.hex"

# Assembler sources.
cp "$top/tests/assembler/data/corpus.asm" "$top/data/examples/hello.asm" "$top/tests/image/data/holes.asm" \
   "$top/tests/basic/data/skeleton-ATmega32.asm" "$corpus/asm/"
for f in "$top"/tests/cli/data/*.asm; do cp "$f" "$corpus/asm/"; done
printf '.def temp = r16\n.set count = 3\nstart: ldi temp, LOW(count*2)\n ldi r17, HIGH($1234)\n.org 0x20\n.db "ab", 1, $ff\n.dw start, -1\n ld r0, Y+\n std Z+63, r1\n rjmp start\n.include "m32def.inc"\n.exit\n' > "$corpus/asm/directives.asm"

# Program words for the disassembler: a first byte of options, then the words of a program.
for name in hello sum sort int0 float; do
  { printf '\001'; avr-objcopy -I ihex -O binary "$top/tests/firmware/hex/$name-atmega32.hex" /dev/stdout; } \
    | head -c 8193 > "$corpus/disasm/$name.bin"
done
{ printf '\002'; cat "$top/tests/image/data/small.bin"; } > "$corpus/disasm/small.bin"
# Every two-word instruction's first word with nothing after it, and words no instruction has.
printf '\000\x0e\x94\x00\x90\xff\xff\x0c\x94\x00\x92\x08\x95\xff\xff' > "$corpus/disasm/twoword.bin"

# Model files: every shipped model and the test model.
cp "$top"/data/models/*.cfg "$top/tests/models/data/atmini8.cfg" "$corpus/model/"

# Settings files: an ordinary one, and one of extreme and malformed values.
cp "$here/data/ordinary.settings" "$here/data/malformed.settings" "$corpus/settings/"

# velmora-cli run options, one argument a line.
i=0
while IFS= read -r line; do
  i=$((i + 1))
  printf '%b' "$line" > "$corpus/cli/args$i.txt"
done <<'ARGS'
--model\nATmega32\n--max-cycles\n1000\nprogram.hex\n
--clock=8\n--dump-format\njson\n--break\n1a\n--break\n0\nprog.words\n
--pin\nPORTB.0=1@100\n--pin\nPORTD.2=0\n--analog\n3=513@2000\n--uart-in\nab\\n\\x41\nx.hex\n
--lcd\n2x16,rs=PORTB.3,e=PORTB.2,data=PORTC\n--device-log\n/dev/null\nlcd.hex\n
--lcd=4x20,cmd=40,data=2\n--vcd\n/dev/null\n--vcd-pins\nPORTB,PB3\nprogram.asm\n
--max-instructions\n18446744073709551615\n--uart-time\n10\n--infinite-loop-stop\n--dump\nprog.bas\n
--help\n
--\n--not-an-option\n
ARGS

# BASIC sources: every statement family and program of the compiler's tests.
cp "$top"/tests/basic/data/families/*.bas "$top"/tests/basic/data/programs/*.bas "$corpus/basic/"

# ELF programs: the debugging test's program whole, cut short, and stripped of its sections.
elf="$top/tests/firmware/elf/debugged.elf"
cp "$elf" "$corpus/elf/"
head -c 300 "$elf" > "$corpus/elf/truncated.elf"
{ head -c 48 "$elf"; printf '\000\000\000\000'; tail -c +53 "$elf"; } > "$corpus/elf/nosections.elf"

du -sh "$corpus"
