"""ATtiny25, ATtiny45, ATtiny85: 8-pin tinies with a 4-channel ADC whose
reference selection has a third bit (REFS2), USI instead of a USART."""

from chips.common import Chip, Kind

PINS_PDIP8 = [
    r"PB5 (PCINT5/\RESET/ADC0/dW)", r"PB3 (PCINT3/XTAL1/CLKI/\OC1B/ADC3)", "PB4 (PCINT4/XTAL2/CLKO/OC1B/ADC2)",
    "GND", r"PB0 (MOSI/DI/SDA/AIN0/OC0A/\OC1A/AREF/PCINT0)", "PB1 (MISO/DO/AIN1/OC0B/OC1A/PCINT1)",
    "PB2 (SCK/USCK/SCL/ADC1/T0/INT0/PCINT2)", "VCC",
]


def _chip(name):
    return Chip(
        name, 25, "PDIP 8", PINS_PDIP8,
        intconf=Kind((5, 1), "INT0 on PB2, sensed by ISC01:00 in MCUCR; there is no INT1"),
        compconf=Kind((3, 2), "AIN0 PB0, AIN1 PB1; ACME is bit 6 of ADCSRB and then ADMUX picks the minus "
                              "input; bandgap 1.1 V"),
        adcconf=Kind(4, "ADMUX holds REFS1:0, ADLAR (bit 5), REFS2 (bit 4) and MUX3:0: eight reference "
                        "choices, ADC registers in I/O space"),
        eeconf=Kind(3, "EEPROM address in EEARH:EEARL, EECR with EEPM1:0 and EEMPE/EEPE"),
        uartconf=Kind(1, "no USART (the USI is not simulated)"),
        instsetconf=Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use"),
        sp_reset_is_ramend=True,
        # MUX3:0 codes 13 and 14 are reserved; the comparator pins take them.
        analog={"AIN0": 13, "AIN1": 14},
    )


ATTINY25 = _chip("ATtiny25")
ATTINY45 = _chip("ATtiny45")
ATTINY85 = _chip("ATtiny85")
CHIPS = [ATTINY25, ATTINY45, ATTINY85]
