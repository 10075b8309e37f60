#!/bin/sh
# Rebuilds the HEX files that the velmora-cli tests run, with avra and its device
# include files. The tests themselves need no cross tools.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for source in echo-atmega8 pins-atmega8 hello-atmega328p hello-at90s2313 toggle-atmega8; do
    cp "$source.asm" "$work/"
    # avra writes its outputs beside the source; keep only the program image.
    (cd "$work" && avra -I /usr/share/avra -o "$source.hex" "$source.asm" >/dev/null 2>&1)
    cp "$work/$source.hex" "$source.hex"
done
