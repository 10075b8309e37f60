#!/bin/sh
# Rebuilds the program images that the image tests read, with the AVR cross tools
# (avr-gcc, avr-objcopy, avra). The tests themselves need none of these tools.
#   small.hex  avr-gcc/avr-objcopy, ATmega8: one small program below 64 KiB
#   big.hex    avr-gcc/avr-objcopy, ATmega128: tables in flash past 64 KiB
#   holes.hex  avra, ATmega128: code and data with gaps, a piece past 64 KiB
# Each .bin beside a .hex is the same image written by avr-objcopy as plain bytes, gaps
# filled with 0xFF: the reference that a loaded image is compared with.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for program in small:atmega8 big:atmega128; do
    name=${program%%:*}
    mcu=${program#*:}
    avr-gcc -mmcu="$mcu" -Os -o "$work/$name.elf" "$name.c"
    avr-objcopy -O ihex -R .eeprom "$work/$name.elf" "$name.hex"
    avr-objcopy -I ihex -O binary --gap-fill 0xFF "$name.hex" "$name.bin"
done

# avra writes its outputs beside the source; keep only the program image.
cp holes.asm "$work/"
(cd "$work" && avra -o holes.hex holes.asm >/dev/null)
cp "$work/holes.hex" holes.hex
avr-objcopy -I ihex -O binary --gap-fill 0xFF holes.hex holes.bin
