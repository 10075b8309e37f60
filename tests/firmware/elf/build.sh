#!/usr/bin/env bash
# Builds debugged.c for the ATmega328P at 16 MHz with -g -gdwarf-4 -Og into debugged.elf, and the
# references the tests compare the ELF reader with, made by binutils-avr from the same ELF:
# debugged.hex (program memory, avr-objcopy), debugged.eep.hex (the .eeprom section) and
# debugged.symbols (avr-readelf's functions and objects: address, size, kind, name). Also debugged.expected from a host
# build. Needs gcc-avr, avr-libc and binutils-avr; the tests read only the committed files.
set -euo pipefail
cd "$(dirname "$0")"
avr-gcc -mmcu=atmega328p -DF_CPU=16000000UL -g -gdwarf-4 -Og -std=gnu99 -Wall -Wextra -Werror -o debugged.elf debugged.c
avr-objcopy -O ihex -R .eeprom debugged.elf debugged.hex
avr-objcopy -O ihex -j .eeprom --change-section-lma .eeprom=0 debugged.elf debugged.eep.hex
avr-readelf -sW debugged.elf | awk '$4 == "FUNC" || $4 == "OBJECT" { printf "%s %d %s %s\n", $2, $3, $4, $8 }' | sort > debugged.symbols
gcc -DHOST -I../src/host -std=gnu99 -O2 -o /tmp/debugged-host debugged.c
/tmp/debugged-host > debugged.expected
