"""ATtiny13: 8-pin tiny with 1 KB flash, 64 bytes of SRAM, a 4-channel ADC and
no USART."""

from chips.common import Chip, Kind

PINS_PDIP8 = [
    r"PB5 (PCINT5/\RESET/ADC0/dW)", "PB3 (PCINT3/CLKI/ADC3)", "PB4 (PCINT4/ADC2)", "GND",
    "PB0 (MOSI/AIN0/OC0A/PCINT0)", "PB1 (MISO/AIN1/OC0B/INT0/PCINT1)", "PB2 (SCK/ADC1/T0/PCINT2)", "VCC",
]

ATTINY13 = Chip(
    "ATtiny13", 25, "PDIP 8", PINS_PDIP8,
    intconf=Kind((7, 1), "INT0 on PB1, sensed by ISC01:00 in MCUCR; there is no INT1"),
    compconf=Kind((3, 2), "AIN0 PB0, AIN1 PB1; ACME is bit 6 of ADCSRB and then ADMUX picks the minus "
                          "input; bandgap 1.1 V"),
    adcconf=Kind(3, "ADMUX holds REFS0 (bit 6), ADLAR (bit 5) and MUX1:0, ADC registers in I/O space, "
                    "control register ADCSRA: the layout of kind 3 with fewer bits in use"),
    eeconf=Kind(5, "64-byte EEPROM addressed by one register (EEAR), EECR with EEPM1:0 and EEMPE/EEPE"),
    uartconf=Kind(1, "no USART"),
    instsetconf=Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use "
                        "(there is no multiplier, which the compiler does not need)"),
    sp_reset_is_ramend=True,
    # MUX1:0 reaches ADC0-3 only; channels 4 and 5 stay free for the comparator pins.
    analog={"AIN0": 4, "AIN1": 5},
)

CHIPS = [ATTINY13]
