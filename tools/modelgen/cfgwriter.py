"""Prints a Model as a model description file (at*.cfg).

Line 1 is free text and line 2 the Section 0 header, so that lines 3, 4, 6 and 7
(pins, flash, sram, eeprom) make the description in the list of models.
"""


def _hex2(value):
    return f"{value:02X}"


def _section0(model):
    chip = model.chip
    a, b = chip.intconf.value
    comp = ",".join(str(v) for v in model.compconf)
    keys = [
        ("pins", len(model.pins), f"{chip.package}"),
        ("flash", model.flashsize, None),
        ("extendedio", model.extendedio, None),
        ("sram", model.sramsize, None),
        ("eeprom", model.eepromsize, None),
        ("simconf", 1, None),
        ("instsetconf", chip.instsetconf.value, chip.instsetconf.why),
        ("intconf", f"{a},{b}", chip.intconf.why),
        ("compconf", comp, chip.compconf.why),
        ("adcconf", chip.adcconf.value, chip.adcconf.why),
        ("eeconf", chip.eeconf.value, chip.eeconf.why),
        ("uartconf", chip.uartconf.value, chip.uartconf.why),
    ]
    lines = ["***** Section 0 *****"]
    notes = []
    for key, value, why in keys:
        lines.append(f"{key}: {value}")
        if why:
            notes.append(f"; {key}: {why}")
    # Notes follow the keys so that lines 3 to 7 stay the keys the model list reads.
    return lines + notes


def _section1(model):
    lines = ["***** Section 1 *****"]
    for address in range(0x20):
        lines.append(f"{_hex2(address)},XXXX,00,FF")
    for reg in model.registers:
        lines.append(f"{_hex2(reg.address)},{reg.name},{_hex2(reg.reset)},{_hex2(reg.mask)}")
    return lines


def _section2(model):
    lines = ["***** Section 2 *****"]
    for name, value in model.definitions():
        lines.append(f".equ {name} = 0x{value:02X}")
    return lines


def _section3(model):
    lines = ["***** Section 3 *****"]
    for reg in model.registers:
        if not reg.bits:
            continue
        lines.append(f"; {reg.name} bit definitions")
        for bit, number in reg.bits:
            lines.append(f".equ {bit} = {number}")
    return lines


def _section4(model):
    lines = ["***** Section 4 *****"]
    for irq in model.interrupts:
        lines.append(f"{irq.name},{irq.vector:04X},{irq.description},{irq.enable},{irq.flag}")
    return lines


def _section5(model):
    lines = ["***** Section 5 *****"]
    for pin in model.pins:
        bit = "x" if pin.bit is None else str(pin.bit)
        channel = "x" if pin.channel is None else str(pin.channel)
        lines.append(f"{pin.number},{pin.caption},{pin.port},{bit},{channel},{pin.kind}")
    return lines


def render(model, libc_version):
    head = [f"{model.chip.name} model: made by tools/modelgen/generate.py from avr-libc {libc_version} "
            f"headers and tools/modelgen/chips; edit those, not this file."]
    body = _section0(model) + _section1(model) + _section2(model) + _section3(model) + _section4(model) \
        + _section5(model)
    return "\n".join(head + body) + "\n"
