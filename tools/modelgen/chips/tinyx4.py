"""ATtiny24, ATtiny44, ATtiny84: 14-pin tinies with an 8-channel ADC on port A
whose left-adjust bit sits in ADCSRB, USI instead of a USART."""

from chips.common import Chip, Kind

PINS_PDIP14 = [
    "VCC", "PB0 (PCINT8/XTAL1/CLKI)", "PB1 (PCINT9/XTAL2)", r"PB3 (PCINT11/\RESET/dW)",
    "PB2 (PCINT10/INT0/OC0A/CKOUT)", "PA7 (PCINT7/ICP/OC0B/ADC7)", "PA6 (PCINT6/OC1A/SDA/MOSI/DI/ADC6)",
    "PA5 (ADC5/DO/MISO/OC1B/PCINT5)", "PA4 (ADC4/USCK/SCL/T1/PCINT4)", "PA3 (ADC3/T0/PCINT3)",
    "PA2 (ADC2/AIN1/PCINT2)", "PA1 (ADC1/AIN0/PCINT1)", "PA0 (ADC0/AREF/PCINT0)", "GND",
]


def _chip(name):
    return Chip(
        name, 25, "PDIP 14", PINS_PDIP14,
        intconf=Kind((5, 1), "INT0 on PB2, sensed by ISC01:00 in MCUCR; there is no INT1"),
        compconf=Kind((3, 2), "AIN0 is PA1 (ADC1) and AIN1 PA2 (ADC2); ACME is bit 6 of ADCSRB and then "
                              "ADMUX picks the minus input; bandgap 1.1 V"),
        adcconf=Kind(2, "ADLAR is bit 4 of ADCSRB, not of ADMUX; ADMUX holds REFS1:0 and MUX5:0"),
        eeconf=Kind(3, "EEPROM address in EEARH:EEARL, EECR with EEPM1:0 and EEMPE/EEPE"),
        uartconf=Kind(1, "no USART (the USI is not simulated)"),
        instsetconf=Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use"),
        sp_reset_is_ramend=True,
    )


ATTINY24 = _chip("ATtiny24")
ATTINY44 = _chip("ATtiny44")
ATTINY84 = _chip("ATtiny84")
CHIPS = [ATTINY24, ATTINY44, ATTINY84]
