#!/usr/bin/env python3
"""Fills the words column (the third) of a table's rows of six cells or more from its
program column (the second) with avr-as and avr-ld.

Usage: make-instructions.py [FILE]   (default: instructions.txt beside this script; also run
on quietruns.txt, stops.txt and sideeffects.txt)
Each row's program (instructions separated by ";") is assembled for the ATmega2560 at address 0;
the linker resolves the relative jumps. The file is rewritten in place.
"""
import os
import subprocess
import sys
import tempfile


def words(program, work):
    source = os.path.join(work, "row.s")
    with open(source, "w") as f:
        f.write("\n".join(part.strip() for part in program.split(";")) + "\n")
    obj, elf, binary = (os.path.join(work, "row" + e) for e in (".o", ".elf", ".bin"))
    subprocess.run(["avr-as", "-mmcu=avr6", "-W", source, "-o", obj], check=True)
    subprocess.run(["avr-ld", "-mavr6", "-Ttext=0", "--pmem-wrap-around=32k", obj, "-o", elf], check=True)
    subprocess.run(["avr-objcopy", "-O", "binary", "-j", ".text", elf, binary], check=True)
    data = open(binary, "rb").read()
    return " ".join("%04X" % (data[i] | data[i + 1] << 8) for i in range(0, len(data), 2))


def main():
    path = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "instructions.txt")
    out = []
    with tempfile.TemporaryDirectory() as work:
        for line in open(path):
            fields = line.rstrip("\n").split(" | ")
            if line.startswith("#") or line.startswith("[") or len(fields) < 6:
                out.append(line)
                continue
            fields[2] = words(fields[1], work)
            out.append(" | ".join(fields) + "\n")
    with open(path, "w") as f:
        f.writelines(out)


if __name__ == "__main__":
    main()
