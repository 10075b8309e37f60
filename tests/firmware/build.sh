#!/usr/bin/env bash
# Rebuilds every firmware HEX in hex/ from src/ with avr-gcc -Os. Needs gcc-avr,
# avr-libc and binutils-avr; the tests themselves only read the committed HEX files.
set -euo pipefail
cd "$(dirname "$0")"
. ./targets.sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p hex

build() { # program chip [extra flags...]
    local program=$1 chip=$2
    shift 2
    local elf="$work/$program-$chip.elf"
    # shellcheck disable=SC2046
    avr-gcc -mmcu="$chip" -DF_CPU="$(cpu_hz "$chip")UL" $(chip_flags "$chip") "$@" \
        -Os -std=gnu99 -Wall -Wextra -Werror -o "$elf" "src/$program.c"
    avr-objcopy -O ihex -R .eeprom "$elf" "hex/$program-$chip.hex"
    avr-size "$elf" | awk -v n="$program-$chip" 'NR == 2 { printf "%-22s flash %5d  sram %4d\n", n, $1 + $2, $2 + $3 }'
}

for chip in $FULL_CHIPS; do
    for program in $(programs_for "$chip"); do build "$program" "$chip"; done
done
for chip in $HELLO_CHIPS; do build hello "$chip" -DCHIP="\"$chip\""; done
