#!/usr/bin/env python3
"""Checks the shipped model files against the committed avr-libc extract.

    python3 tools/modelgen/check.py [--gcc]

Reads data/models/at*.cfg the way the loader does (sections, skipping rule of
Section 3) and compares register addresses, bit names, vector addresses and
sizes with tests/models/data/avrlibc_extract.txt; checks the package section.
With --gcc it also compares the extract with the macros avr-gcc itself sees
(avr-gcc -E -dM), which tests the header reader the extract was made with.
The C++ test tests/models/validation_test.cpp does the same through the
product's loader; this script needs neither a build nor avr-libc.
"""

import argparse
import glob
import os
import re
import subprocess
import sys

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
EXTRACT = os.path.join(ROOT, "tests", "models", "data", "avrlibc_extract.txt")
MODELS = os.path.join(ROOT, "data", "models")
POLARITY_ZERO = {"ERDY": ("EE_RDY", "EE_READY", "EEPROM_READY"), "SPMR": ("SPM_RDY", "SPM_READY")}


def read_extract(path):
    devices, current = {}, None
    for line in open(path):
        words = line.split()
        if not words or words[0].startswith("#"):
            continue
        key = words[0]
        if key == "device":
            current = {"registers": {}, "bits": {}, "vectors": {}}
            devices[words[1]] = current
        elif key == "end":
            current = None
        elif key == "register":
            current["registers"][words[1]] = int(words[2], 16)
        elif key == "bit":
            current["bits"][words[1]] = int(words[2])
        elif key == "vector":
            current["vectors"][words[2]] = int(words[1])
        elif key == "header":
            current[key] = words[1]
        else:
            current[key] = int(words[1], 0)
    return devices


def read_model(path):
    sections = {}
    current = None
    for number, raw in enumerate(open(path, newline=""), start=1):
        line = raw.rstrip("\n")
        m = re.match(r"^\*\*\*\*\* Section (\d) \*\*\*\*\*$", line)
        if m:
            current = int(m.group(1))
            sections[current] = []
            continue
        if current is not None:
            sections[current].append((number, line))
    return sections


class Checker:
    def __init__(self):
        self.errors = []

    def fail(self, model, text):
        self.errors.append(f"{model}: {text}")

    def check(self, name, path, facts):
        s = read_model(path)
        keys = {}
        for _, line in s[0]:
            if not line.startswith(";") and ": " in line:
                k, v = line.split(": ", 1)
                keys[k] = v
        lines = open(path).read().split("\n")
        if [lines[i].split(":")[0] for i in (2, 3, 5, 6)] != ["pins", "flash", "sram", "eeprom"]:
            self.fail(name, "lines 3, 4, 6, 7 must be pins, flash, sram, eeprom")
        sram = max(0, facts["ramend"] - facts["ramstart"] + 1)
        expect = {"flash": facts["flashend"] + 1, "sram": sram, "eeprom": facts["e2end"] + 1,
                  "extendedio": facts["ramstart"] - 0x60 if sram else 0}
        for k, v in expect.items():
            if int(keys.get(k, "0")) != v:
                self.fail(name, f"{k}: {keys.get(k)} but avr-libc gives {v}")

        registers = {}
        for number, line in s[1]:
            if line.startswith(";"):
                continue
            address, reg, reset, mask = line.split(",")
            if reg != "XXXX":
                registers[reg] = int(address, 16)
                if facts["registers"].get(reg) != int(address, 16):
                    self.fail(name, f"line {number}: {reg} at ${address}, avr-libc says {facts['registers'].get(reg)}")
        covered = set(registers.values())
        for reg, address in facts["registers"].items():
            if address not in covered:
                self.fail(name, f"avr-libc register {reg} (${address:02X}) missing")

        skipping, owner = True, None
        for number, line in s[3]:
            if line.startswith("; "):
                reg = line[2:].split(" ")[0]
                skipping = reg not in registers or re.match(r"^(PORT[A-G]|DDR[A-G]|PIN[A-G])$", reg)
                owner = reg
                continue
            if skipping:
                continue
            m = re.match(r"^\.equ (\w+) = (\d)$", line)
            if not m:
                self.fail(name, f"line {number}: not a bit definition: {line}")
            elif facts["bits"].get(m.group(1)) != int(m.group(2)):
                self.fail(name, f"line {number}: {owner} bit {m.group(1)} = {m.group(2)}, avr-libc says "
                                f"{facts['bits'].get(m.group(1))}")

        words = facts["vectorbytes"] // 2
        vectors = []
        for number, line in s[4]:
            fields = line.split(",")
            irq, vector = fields[0], int(fields[1], 16)
            libc_names = POLARITY_ZERO.get(irq, (irq,))
            nums = [facts["vectors"][n] for n in libc_names if n in facts["vectors"]]
            if not nums or vector != nums[0] * words:
                self.fail(name, f"line {number}: {irq} at {vector:04X}, avr-libc vector {nums}")
            for ref in fields[3:5]:
                reg, _, bit = ref.partition(".")
                if reg not in registers or not bit.isdigit():
                    self.fail(name, f"line {number}: bad bit reference {ref}")
            vectors.append(vector)
        if vectors != sorted(vectors) or len(vectors) != len(set(facts["vectors"].values())):
            self.fail(name, f"{len(vectors)} vectors in file, {len(set(facts['vectors'].values()))} in avr-libc")

        pins = [line.split(",") for _, line in s[5]]
        if len(pins) != int(keys["pins"]):
            self.fail(name, f"{len(pins)} pins listed, pins: {keys['pins']}")
        seen = set()
        for fields in pins:
            number, caption, port, bit, channel, kind = fields
            if port != "x":
                if f"PORT{port.upper()}" not in registers or (port, bit) in seen:
                    self.fail(name, f"pin {number}: port {port} bit {bit}")
                seen.add((port, bit))
                if not caption.startswith(f"P{port.upper()}{bit}"):
                    self.fail(name, f"pin {number}: caption {caption} for port {port} bit {bit}")
            expected_kind = "0" if port == "x" else ("2" if channel != "x" else "1")
            if kind != expected_kind:
                self.fail(name, f"pin {number}: type {kind}")


def gcc_check(devices):
    """The extract against avr-gcc's own view of the headers."""
    problems = []
    for name, facts in devices.items():
        out = subprocess.run(["avr-gcc", f"-mmcu={name.lower()}", "-E", "-dM", "-x", "c", "-include", "avr/io.h",
                              "/dev/null"], capture_output=True, text=True, check=True).stdout
        macros = dict(re.findall(r"^#define (\w+) (.*)$", out, re.M))
        for reg, address in facts["registers"].items():
            m = re.match(r"_SFR_(IO|MEM)8 ?\((0[xX][0-9A-Fa-f]+)\)", macros.get(reg, ""))
            target = macros.get(reg, "")
            while m is None and target in macros:
                target = macros[target]
                m = re.match(r"_SFR_(IO|MEM)8 ?\((0[xX][0-9A-Fa-f]+)\)", target)
            if m is None or int(m.group(2), 16) + (0x20 if m.group(1) == "IO" else 0) != address:
                problems.append(f"{name}: register {reg}")
        for bit, value in facts["bits"].items():
            if macros.get(bit, "").strip("() ") != str(value):
                problems.append(f"{name}: bit {bit}")
        for vector, number in facts["vectors"].items():
            if macros.get(vector + "_vect_num", "").strip() != str(number):
                problems.append(f"{name}: vector {vector}")
    return problems


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--gcc", action="store_true", help="also compare the extract with avr-gcc -dM")
    args = parser.parse_args()
    devices = read_extract(EXTRACT)
    checker = Checker()
    files = sorted(glob.glob(os.path.join(MODELS, "at*.cfg")))
    names = {n.lower(): n for n in devices}
    for path in files:
        base = os.path.basename(path)[:-4]
        if base not in names:
            checker.fail(base, "no avr-libc facts in the extract")
            continue
        checker.check(names[base], path, devices[names[base]])
    if len(files) != len(devices):
        checker.fail("models", f"{len(files)} files, {len(devices)} devices in the extract")
    if args.gcc:
        checker.errors += gcc_check(devices)
    for e in checker.errors:
        print(e)
    print(f"{len(files)} models checked, {len(checker.errors)} problems")
    sys.exit(1 if checker.errors else 0)


if __name__ == "__main__":
    main()
