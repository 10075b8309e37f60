#!/usr/bin/env bash
# Rebuilds the benchmark firmware and its expected output. Needs gcc-avr and avr-libc.
set -euo pipefail
cd "$(dirname "$0")"
avr-gcc -mmcu=atmega328p -Os -o crc32.elf crc32.c
# simavr needs the ELF; compare.sh rebuilds it when the toolchain is there.
avr-objcopy -O ihex -R .eeprom crc32.elf crc32.hex
gcc -DHOST -O2 -o /tmp/crc32-host crc32.c
/tmp/crc32-host > crc32.expected
rm -f crc32.elf
