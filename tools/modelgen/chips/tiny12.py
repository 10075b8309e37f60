"""ATtiny12: 8-pin tiny of the first generation: no SRAM, a three-level hardware
stack, no X and Y pointers; the model without SRAM."""

from chips.common import Chip, Kind

PINS_PDIP8 = [
    r"PB5 (\RESET)", "PB3 (XTAL1)", "PB4 (XTAL2)", "GND", "PB0 (MOSI/AIN0)", "PB1 (MISO/INT0/AIN1)",
    "PB2 (SCK/T0)", "VCC",
]

ATTINY12 = Chip(
    "ATtiny12", 1, "PDIP 8", PINS_PDIP8,
    intconf=Kind((7, 1), "INT0 on PB1, sensed by ISC01:00 in MCUCR; there is no INT1"),
    compconf=Kind((2, 5), "AIN0 PB0 against AIN1 PB1, no multiplexer; AINBG selects the 1.22 V bandgap"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(4, "64-byte EEPROM addressed by one register (EEAR), EECR with EEMWE/EEWE"),
    uartconf=Kind(1, "no USART"),
    instsetconf=Kind(2, "AVR1 core: only Z as pointer and no ADIW/SBIW, so the compiler must use its "
                        "limited routines"),
    sp_reset_is_ramend=False,
    analog={"AIN0": 0, "AIN1": 1},
    # avr-libc names no bits of MCUSR here; the data sheet has WDRF, BORF, EXTRF, PORF in bits 3-0.
    masks={"MCUSR": 0x0F},
)

CHIPS = [ATTINY12]
