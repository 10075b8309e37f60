"""One model: the header facts of a chip joined with its supplement.

Everything the model file says is worked out here; cfgwriter.py only prints it.
Every inconsistency between the two sources stops the generator with a message,
so a supplement cannot silently name a bit or register the chip does not have.
"""

import re

from avrfacts import DeviceFacts
from chips import common


class ModelError(Exception):
    pass


class Register:
    def __init__(self, name, address, names):
        self.name = name        # the name shown in lists
        self.address = address  # data address
        self.names = names      # every avr-libc name of this address, header order
        self.reset = 0
        self.mask = 0xFF
        self.bitsby = {}        # owner name -> [(bit name, number)] as the header groups them

    @property
    def own_bits(self):
        """Bits under the shown name, or under the other names when it has none."""
        if self.name in self.bitsby:
            return self.bitsby[self.name]
        return [b for name in self.names for b in self.bitsby.get(name, [])]

    @property
    def bits(self):
        """All bit definitions of the address, highest bit first; the shown name's bits come
        last, since the last name given to a bit row is what the bit table keeps."""
        out = []
        for name in self.names:
            if name != self.name:
                out += sorted(self.bitsby.get(name, []), key=lambda b: -b[1])
        return out + sorted(self.bitsby.get(self.name, []), key=lambda b: -b[1])


class Interrupt:
    def __init__(self, name, vector, description, enable, flag):
        self.name = name
        self.vector = vector            # word address
        self.description = description
        self.enable = enable            # "TIMSK.0"
        self.flag = flag


class Pin:
    def __init__(self, number, caption, functions, port, bit, channel, kind):
        self.number = number
        self.caption = caption
        self.functions = functions  # the caption's names: "PB2", "INT2", "AIN0"
        self.port = port        # "a".."g" or "x"
        self.bit = bit          # 0..7 or None
        self.channel = channel  # analog channel or None
        self.kind = kind        # 0 supply and such, 1 digital, 2 digital and analog


def _bitmask(numbers):
    mask = 0
    for n in numbers:
        mask |= 1 << n
    return mask


def _is_port_register(name):
    return re.match(r"^(PORT|DDR|PIN)[A-G]$", name) is not None


class Model:
    def __init__(self, chip):
        self.chip = chip
        self.facts = DeviceFacts(chip.macro, chip.arch)
        f = self.facts
        self.flashsize = f.flashsize
        self.sramsize = max(0, f.ramend - f.ramstart + 1)
        self.extendedio = f.ramstart - 0x60 if self.sramsize else 0
        self.eepromsize = f.eepromsize
        self.pins = self._pins()
        self.registers = self._registers()
        self.byname = {n: r for r in self.registers for n in r.names}
        self._assign_bits()
        self._reset_and_masks()
        self.interrupts = self._interrupts()
        self.compconf = self._compconf()

    # --- package -----------------------------------------------------------------
    def _pins(self):
        pins = []
        for number, caption in enumerate(self.chip.pins, start=1):
            tokens = re.split(r"[ /()]+", caption.strip())
            port, bit, channel = "x", None, None
            m = re.match(r"^P([A-G])([0-7])$", tokens[0])  # the port bit comes first in a caption
            if m:
                port, bit = m.group(1).lower(), int(m.group(2))
            for t in tokens:
                a = re.match(r"^ADC(\d+)$", t)
                if a:
                    channel = int(a.group(1))
            if channel is None:
                for t in tokens:
                    if t in self.chip.analog:
                        channel = self.chip.analog[t]
            kind = 0 if bit is None else (2 if channel is not None else 1)
            if channel is not None and bit is None:
                raise ModelError(f"{self.chip.name}: pin {number} has an analog channel but no port bit")
            pins.append(Pin(number, caption, set(tokens), port, bit, channel, kind))
        channels = [p.channel for p in pins if p.channel is not None]
        if len(channels) != len(set(channels)) or any(c > 15 for c in channels):
            raise ModelError(f"{self.chip.name}: analog channels must be distinct and 0-15: {channels}")
        return pins

    def portmask(self, letter):
        """Bits of PORTx and DDRx that the package brings out as I/O pins."""
        return _bitmask(p.bit for p in self.pins if p.port == letter.lower())

    # --- registers -----------------------------------------------------------------
    def _registers(self):
        by_address = {}
        for name, reg in self.facts.byte_registers().items():
            by_address.setdefault(reg.address, []).append(name)
        registers = []
        self.unmapped = []  # (name, address) of registers the data space map cannot hold
        for address in sorted(by_address):
            names = by_address[address]
            if address >= 0x60 + self.extendedio:
                raise ModelError(f"{self.chip.name}: {names} at ${address:X} lies in SRAM")
            if address > 0xFF:
                # Section 1 has two hex digits for the address: such a register keeps its
                # .equ for the assembler but gets no cell, no mask and no bit names.
                self.unmapped += [(n, address) for n in names]
                continue
            registers.append(Register(self._shown_name(names), address, names))
        return registers

    def _shown_name(self, names):
        if len(names) == 1:
            return names[0]
        for preferred in common.PREFERRED_NAMES:
            if preferred in names:
                return preferred
        raise ModelError(f"{self.chip.name}: choose the name to show among {names}")

    # --- bits ----------------------------------------------------------------------
    def _group_owner(self, group):
        first = group.bits[0][0]
        if first in self.chip.owners:
            return self.chip.owners[first]
        if group.owner is not None:
            return group.owner
        kind, text = group.context if group.context else (None, None)
        if kind == "comment":
            owner = common.owner_from_prose(text)
            if owner != "":
                return owner
        raise ModelError(f"{self.chip.name}: which register owns {[b for b, _ in group.bits]} "
                         f"(header says {group.context})?")

    def _assign_bits(self):
        self.bitowner = {}  # bit name -> Register
        for group in self.facts.groups:
            owner = self._group_owner(group)
            if owner is None:
                continue
            reg = self.byname.get(owner)
            if reg is None and any(n == owner for n, _ in self.unmapped):
                continue
            if reg is None:
                raise ModelError(f"{self.chip.name}: bits {group.bits} name owner {owner}, not a register here")
            bits = reg.bitsby.setdefault(owner, [])
            taken = {n: b for b, n in bits}
            for bit, number in group.bits:
                if number in taken and taken[number] != bit:
                    raise ModelError(f"{self.chip.name}: {owner} bit {number} is both {taken[number]} "
                                     f"and {bit}: is the header's comment above {group.bits[0][0]} wrong?")
                if (bit, number) not in bits:
                    bits.append((bit, number))
                self.bitowner.setdefault(bit, reg)

    def named_mask(self, reg):
        return _bitmask(n for _, n in reg.own_bits)

    # --- reset values and write masks --------------------------------------------------
    def _reset_and_masks(self):
        chip = self.chip
        e2end = self.eepromsize - 1
        for reg in self.registers:
            name = reg.name
            if _is_port_register(name):
                # The package's pins, less bits the header does not give this register
                # (ATtiny12's PB5 has a DDRB bit but no PORTB bit: it can only pull low).
                named = self.named_mask(reg) or 0xFF
                reg.mask = 0 if name.startswith("PIN") else self.portmask(name[-1]) & named
            elif common.READONLY_REGISTERS.match(name):
                reg.mask = 0
            elif reg.own_bits:
                reg.mask = _bitmask(n for b, n in reg.own_bits
                               if not common.FLAG_BITS.match(b) and not common.READONLY_BITS.match(b))
            if name in ("EEARL", "EEAR"):
                reg.mask = min(e2end, 0xFF)
            elif name == "EEARH":
                reg.mask = e2end >> 8
            if any(n in common.WHOLE_REGISTERS for n in reg.names):
                reg.mask = 0xFF

            reset = 0
            for n in reg.names:
                reset = common.RESET_VALUES.get(n, reset)
            if common.USART_C.match(name):
                reset = 0x86 if any(b.startswith("URSEL") for b, _ in reg.own_bits) else 0x06
            if chip.sp_reset_is_ramend and name == "SPL":
                reset = self.facts.ramend & 0xFF
            if chip.sp_reset_is_ramend and name == "SPH":
                reset = self.facts.ramend >> 8
            reg.reset = reset
        for name, value in chip.masks.items():
            self._register(name).mask = value

    def _register(self, name):
        if name not in self.byname:
            raise ModelError(f"{self.chip.name}: supplement names register {name}, which the chip lacks")
        return self.byname[name]

    # --- interrupts ------------------------------------------------------------------
    def _bitref(self, bit):
        reg = self.bitowner.get(bit)
        if reg is None:
            return None
        return f"{reg.name}.{self.facts.bits[bit]}"

    def _interrupts(self):
        words = self.facts.vectorbytes // 2
        seen = set()
        table = []
        for v in self.facts.vectors:
            if v.number in seen:
                continue  # a later alias of the same vector
            seen.add(v.number)
            pairs = [self.chip.vector_bits[v.name]] if v.name in self.chip.vector_bits \
                else common.vector_bit_candidates(v.name)
            chosen = None
            for enable, flag in pairs:
                if self._bitref(enable) and self._bitref(flag):
                    chosen = (self._bitref(enable), self._bitref(flag))
                    break
            if chosen is None:
                raise ModelError(f"{self.chip.name}: no enable/flag bits for vector {v.name} (tried {pairs})")
            name = common.POLARITY_ZERO_NAMES.get(v.name, v.name)
            table.append(Interrupt(name, v.number * words, common.describe(v.name), *chosen))
        return table

    # --- comparator ------------------------------------------------------------------
    def _compconf(self):
        kind, bandgap = self.chip.compconf.value
        if kind < 2:
            return (kind, bandgap, 0, 0)
        channel = {}
        for p in self.pins:
            for t in ("AIN0", "AIN1"):
                if t in p.functions:
                    channel[t] = p.channel
        if channel.get("AIN0") is None or channel.get("AIN1") is None:
            raise ModelError(f"{self.chip.name}: comparator pins need analog channels: {channel}")
        return (kind, bandgap, channel["AIN0"], channel["AIN1"])

    # --- definitions -----------------------------------------------------------------
    def definitions(self):
        """(name, value) for every .equ of Section 2: I/O registers by I/O address, others by data address."""
        out = []
        for reg in self.registers:
            value = reg.address - 0x20 if reg.address < 0x60 else reg.address
            for n in reg.names:
                out.append((n, value))
        out += [(n, address) for n, address in self.unmapped]
        for alias, target in self.chip.extra_names.items():
            reg = self._register(target)
            out.append((alias, reg.address - 0x20 if reg.address < 0x60 else reg.address))
        return out

    def ports(self):
        return sorted({p.port for p in self.pins if p.port != "x"})

    def check_ports(self):
        """Each package port bit must be an input bit the header names for that port."""
        for letter in self.ports():
            for prefix in ("PORT", "DDR", "PIN"):
                if prefix + letter.upper() not in self.byname:
                    raise ModelError(f"{self.chip.name}: pins on port {letter} but no {prefix}{letter.upper()}")
            named = self.named_mask(self.byname["PIN" + letter.upper()])
            if named and self.portmask(letter) & ~named:
                raise ModelError(f"{self.chip.name}: package uses port {letter} bits "
                                 f"{self.portmask(letter):02X}, header names PIN{letter.upper()} {named:02X}")
