#!/bin/sh
# Rebuilds the images of the listing round trip with avra and avr-objcopy. The test
# itself needs neither.
#   roundtrip_source.hex/.bin       avra's image of roundtrip_source.asm
#   roundtrip_listing.asm           NOT made here: the disassembler's listing without
#                                   opcodes of roundtrip_source.bin, held by
#                                   disassembler_test.cpp (which writes the new text to a
#                                   file named in its failure message when it changes)
#   roundtrip_reassembled.hex/.bin  avra's image of that listing
# The listing carries no register definitions of its own, as the Velmora assembler
# knows them; avra gets XL..ZH and SREG from its device file through a two-line wrapper.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cp roundtrip_source.asm roundtrip_listing.asm "$work/"
printf '.include "m2560def.inc"\r\n.include "roundtrip_listing.asm"\r\n' > "$work/roundtrip_reassembled.asm"
# avra writes its outputs beside the source; keep only the program images.
for name in roundtrip_source roundtrip_reassembled; do
    (cd "$work" && avra -o "$name.hex" "$name.asm" >avra.log 2>&1) || { cat "$work/avra.log"; exit 1; }
    cp "$work/$name.hex" "$name.hex"
    avr-objcopy -I ihex -O binary --gap-fill 0xFF "$name.hex" "$name.bin"
done
cmp roundtrip_source.bin roundtrip_reassembled.bin && echo "round trip gives the same image"
