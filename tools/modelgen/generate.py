#!/usr/bin/env python3
"""Writes data/models/<chip>.cfg for every chip in tools/modelgen/chips.

    python3 tools/modelgen/generate.py [--out DIR] [CHIP ...]

Needs avr-libc's headers (AVR_INCLUDE_DIR, default /usr/lib/avr/include).
"""

import argparse
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import cfgwriter  # noqa: E402
import chips  # noqa: E402
from avrfacts import libc_version  # noqa: E402
from model import Model, ModelError  # noqa: E402

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", default=os.path.join(ROOT, "data", "models"))
    parser.add_argument("chips", nargs="*")
    args = parser.parse_args()
    selected = [chips.by_name(n) for n in args.chips] if args.chips else chips.ALL
    version = libc_version()
    os.makedirs(args.out, exist_ok=True)
    for chip in selected:
        try:
            model = Model(chip)
            model.check_ports()
        except ModelError as e:
            sys.exit(f"error: {e}")
        path = os.path.join(args.out, chip.filename)
        with open(path, "w", newline="") as f:
            f.write(cfgwriter.render(model, version))
        print(f"{path}: {len(model.registers)} registers, {len(model.interrupts)} interrupts, {len(model.pins)} pins")


if __name__ == "__main__":
    main()
