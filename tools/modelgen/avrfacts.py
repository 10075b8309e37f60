"""Facts about one device, read from the active lines of avr-libc's headers.

Registers (data addresses), bit numbers grouped under the register that owns
them, interrupt vector numbers and names, and the memory sizes. The owner of a
group of bit numbers is what the header says just above the group: the
register's own #define (newer headers) or a comment naming it (older ones).
Where a header only has prose there, the chip's supplement names the owner.
"""

import os
import re

from preprocess import INCLUDE_DIR, preprocess

_SFR = re.compile(r"_SFR_(IO|MEM)(8|16)\s*\(\s*(0[xX][0-9a-fA-F]+|\d+)\s*\)")
_NUMBER = re.compile(r"^\(?\s*(0[xX][0-9a-fA-F]+|\d+)[uUlL]*\s*\)?$")
_RESERVED_NOTE = re.compile(r"^bits?\b.*\breserved\b|^reserved\b", re.IGNORECASE)

# Small-valued macros that are not bit numbers.
_NOT_BITS = re.compile(r"^(_|SIGNATURE_|FUSE_|SLEEP_MODE_|E2PAGESIZE$|SPM_PAGESIZE$|.*_vect_num$|.*FUSE_DEFAULT$|.*END$|.*SIZE$|RAMSTART$)")


def number(text):
    m = _NUMBER.match(text.strip())
    return int(m.group(1), 0) if m else None


class Register:
    def __init__(self, name, address, width):
        self.name = name
        self.address = address  # data address
        self.width = width      # 8 or 16


class Vector:
    def __init__(self, number, name):
        self.number = number
        self.name = name  # avr-libc name without "_vect"


class BitGroup:
    def __init__(self, owner, context, bits):
        self.owner = owner      # register name, or None when the header does not say
        self.context = context  # the comment or define text above the group
        self.bits = bits        # [(name, number)] in header order


class DeviceFacts:
    def __init__(self, device_macro, arch):
        self._pre, self.lines = preprocess(device_macro, arch)
        self.macros = self._pre.macros
        self.registers = {}    # name -> Register, a second name of an address included
        self.bits = {}         # bit name -> number, every bit-like macro
        self.groups = []
        self.vectors = []
        self._read_registers()
        self._read_bits()
        self._read_vectors()

    # --- sizes --------------------------------------------------------------
    def value(self, name, default=None):
        if name not in self.macros:
            return default
        return self._pre.arithmetic(name)

    @property
    def flashsize(self):
        return self.value("FLASHEND") + 1

    @property
    def ramstart(self):
        return self.value("RAMSTART", 0x60)

    @property
    def ramend(self):
        return self.value("RAMEND")

    @property
    def eepromsize(self):
        return self.value("E2END", -1) + 1

    @property
    def vectorbytes(self):
        """Bytes per vector: 4 where the table holds JMP, 2 where it holds RJMP."""
        return self.value("_VECTORS_SIZE") // (max(v.number for v in self.vectors) + 1)

    # --- registers ----------------------------------------------------------
    def _read_registers(self):
        for line in self.lines:
            if line.kind != "define":
                continue
            if line.name.startswith("AVR_"):
                continue  # common.h's generic names for SREG and SP
            m = _SFR.search(line.value)
            if m and line.value.strip().startswith("_SFR_"):
                address = int(m.group(3), 0) + (0x20 if m.group(1) == "IO" else 0)
                self.registers[line.name] = Register(line.name, address, int(m.group(2)))
                continue
            target = line.value.strip().strip("()").strip()
            if target in self.registers and target != line.name:
                base = self.registers[target]
                self.registers[line.name] = Register(line.name, base.address, base.width)

    def byte_registers(self):
        return {n: r for n, r in self.registers.items() if r.width == 8}

    # --- bits ---------------------------------------------------------------
    def _is_bit(self, line):
        if line.kind != "define" or _NOT_BITS.match(line.name) or line.name in self.registers:
            return False
        v = number(line.value)
        return v is not None and 0 <= v <= 7

    def _read_bits(self):
        context = None  # what stands above the next group: ("define" | "comment" | "other" | "after", text)
        group = None
        for line in self.lines:
            if self._is_bit(line):
                self.bits[line.name] = number(line.value)
                if group is None:
                    group = BitGroup(self._owner(context), context, [])
                    self.groups.append(group)
                group.bits.append((line.name, number(line.value)))
                continue
            if line.kind == "comment" and _RESERVED_NOTE.search(line.comment):
                continue  # "bit 5 reserved": neither ends a group nor names one
            if line.kind == "blank":
                if group is not None:
                    context = ("after", None)
                group = None
                continue
            group = None
            if line.kind == "comment":
                context = ("comment", line.comment)
            elif line.name in self.registers:
                context = ("define", line.name)
            else:
                context = ("other", line.name)

    def _owner(self, context):
        if context is None:
            return None
        kind, text = context
        if kind == "define":
            return text
        if kind != "comment":
            return None
        byte_registers = self.byte_registers()
        # "External Interrupt Flag Register - EIFR", "MCU Status Register - MCUSR, MCUCSR"
        if " - " in text:
            for name in re.findall(r"[A-Z][A-Z0-9_]*", text.rsplit(" - ", 1)[1]):
                if name in byte_registers:
                    return name
        # "SREG bit definitions", "UBRR0H bif definitions"
        m = re.match(r"^(\w+) bi[tf] definitions\b", text.strip())
        if m and m.group(1) in byte_registers:
            return m.group(1)
        # "TIMSK", "GIMSK / GICR", "ADCSR / ADCSRA": nothing but register names
        words = re.findall(r"[A-Za-z0-9_]+", text)
        if words and all(w in byte_registers for w in words):
            return words[0]
        return None

    # --- vectors ------------------------------------------------------------
    def _read_vectors(self):
        for line in self.lines:
            if line.kind == "define" and line.name.endswith("_vect_num"):
                self.vectors.append(Vector(number(line.value), line.name[:-len("_vect_num")]))
        self.vectors.sort(key=lambda v: v.number)


def libc_version():
    """avr-libc's version string, for the record in generated files."""
    with open(os.path.join(INCLUDE_DIR, "avr", "version.h")) as f:
        m = re.search(r'__AVR_LIBC_VERSION_STRING__\s+"([^"]+)"', f.read())
    return m.group(1) if m else "unknown"
