#!/usr/bin/env bash
# Rebuilds the benchmark firmware and their expected output. Needs gcc-avr and avr-libc.
set -euo pipefail
cd "$(dirname "$0")"
for name in crc32 mandel; do
  avr-gcc -mmcu=atmega328p -Os -o "$name.elf" "$name.c"
  # simavr needs the ELF; compare.sh rebuilds it when the toolchain is there.
  avr-objcopy -O ihex -R .eeprom "$name.elf" "$name.hex"
  gcc -DHOST -O2 -o "/tmp/$name-host" "$name.c"
  "/tmp/$name-host" > "$name.expected"
  rm -f "$name.elf"
done
