#!/usr/bin/env bash
# Computes the expected USART output of the pure-computation firmware by compiling
# the same sources for the host, with host stand-ins for the USART (stdout), flash
# and EEPROM access and avr-libc's CRC helpers. No simulator is involved.
set -euo pipefail
cd "$(dirname "$0")"
. ./targets.sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p expected

for chip in $FULL_CHIPS; do
    for program in $(programs_for "$chip"); do
        case " $HOST_PROGRAMS " in *" $program "*) ;; *) continue ;; esac
        # Host types differ from the AVR's (int is 32 bits, long 64): the sources use
        # fixed-width types and casts so that both compute the same values.
        # shellcheck disable=SC2046
        gcc -DHOST $(chip_flags "$chip") -Isrc/host -std=gnu99 -O2 -ffp-contract=off -Wall -Wextra -Werror \
            -o "$work/$program-$chip" "src/$program.c"
        "$work/$program-$chip" > "expected/$program-$chip.txt"
    done
done
