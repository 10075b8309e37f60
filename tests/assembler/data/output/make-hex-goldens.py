#!/usr/bin/env python3
"""Writes the HEX goldens of the output tests (*.hex beside the *.asm sources) from the
program bytes each source must give, and checks every file with avr-objcopy, which must
read it back to the same bytes.

The bytes are worked out by hand from the sources (words as avr-as encodes them, little
endian); the record layout is the one the assembler promises: the image from byte 0 to the
last byte stored, 16-byte records, a 04 record before each 64 KiB block, CR LF endings.

Run from this folder: python3 make-hex-goldens.py  (needs avr-objcopy on the PATH)."""

import os
import subprocess
import tempfile

SIXTEEN = bytes.fromhex("0FEF 08BB 3412 7856 1090 0001 0000 F8CF".replace(" ", ""))
IMAGES = {
    "empty": b"",
    "sixteen": SIXTEEN,
    "eighteen": SIXTEEN + bytes.fromhex("8895"),
    # 256 words of nothing, then RJMP MAIN to itself
    "org100": bytes(512) + bytes.fromhex("FFCF"),
    # the backward .ORG leaves RET as the last byte stored: the .DW above it is lost
    "backorg": bytes.fromhex("0895"),
    # LDI fails and keeps its room: three words, the first never written
    "errors": bytes(6),
}


def record(rtype, address, data):
    body = bytes([len(data), address >> 8, address & 0xFF, rtype]) + data
    checksum = (256 - sum(body) % 256) % 256
    return ":" + body.hex().upper() + f"{checksum:02X}\r\n"


def hextext(image):
    text = ""
    for at in range(0, len(image), 16):
        if at % 65536 == 0:
            text += record(4, 0, (at >> 16).to_bytes(2, "big"))
        text += record(0, at % 65536, image[at:at + 16])
    return text + record(1, 0, b"")


def check(path, image):
    if not image:
        return  # avr-objcopy refuses a file without data; the end record alone is checked by eye
    with tempfile.TemporaryDirectory() as folder:
        binary = os.path.join(folder, "out.bin")
        subprocess.run(["avr-objcopy", "-I", "ihex", "-O", "binary", path, binary], check=True)
        got = open(binary, "rb").read()
    if got != image:
        raise SystemExit(f"{path}: avr-objcopy reads {got.hex()} instead of {image.hex()}")


def main():
    for name, image in IMAGES.items():
        path = name + ".hex"
        with open(path, "w", newline="") as f:
            f.write(hextext(image))
        check(path, image)
        print(path, len(image), "bytes")


if __name__ == "__main__":
    main()
