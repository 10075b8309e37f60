#!/usr/bin/env python3
"""Writes the avr-libc facts that the model validation test compares against.

    python3 tools/modelgen/extract.py [--out FILE]

One block per chip of tools/modelgen/chips, straight from the headers, with no
supplement applied: sizes, every 8-bit register name with its data address,
every bit-number macro, every vector number with each of its names.

    device ATmega32
    header iom32.h
    flashend 0x7FFF
    ramstart 0x0060
    ramend 0x085F
    e2end 0x03FF
    vectorbytes 4
    register PORTB 0x38
    bit TOIE0 0
    vector 11 TIMER0_OVF
    end
"""

import argparse
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import chips  # noqa: E402
from avrfacts import DeviceFacts, libc_version  # noqa: E402

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
DEFAULT_OUT = os.path.join(ROOT, "tests", "models", "data", "avrlibc_extract.txt")


def device_block(chip):
    f = DeviceFacts(chip.macro, chip.arch)
    header = next((x.filename for x in f.lines if x.filename.startswith("io") and x.filename != "io.h"), "?")
    lines = [
        f"device {chip.name}",
        f"header {header}",
        f"flashend 0x{f.value('FLASHEND'):X}",
        f"ramstart 0x{f.ramstart:04X}",
        f"ramend 0x{f.ramend:04X}",
        f"e2end 0x{f.value('E2END'):04X}",
        f"vectorbytes {f.vectorbytes}",
    ]
    for name, reg in sorted(f.byte_registers().items(), key=lambda item: (item[1].address, item[0])):
        lines.append(f"register {name} 0x{reg.address:02X}")
    for name in sorted(f.bits):
        lines.append(f"bit {name} {f.bits[name]}")
    for v in f.vectors:
        lines.append(f"vector {v.number} {v.name}")
    lines.append("end")
    return lines


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", default=DEFAULT_OUT)
    args = parser.parse_args()
    lines = [f"# avr-libc {libc_version()} facts for the model validation test.",
             "# Made by tools/modelgen/extract.py from the installed headers; do not edit."]
    for chip in chips.ALL:
        lines += device_block(chip)
    os.makedirs(os.path.dirname(args.out), exist_ok=True)
    with open(args.out, "w", newline="") as f:
        f.write("\n".join(lines) + "\n")
    print(f"{args.out}: {len(chips.ALL)} devices")


if __name__ == "__main__":
    main()
