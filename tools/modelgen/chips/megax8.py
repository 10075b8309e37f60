"""ATmega48, ATmega88, ATmega168, ATmega328P: the 28-pin megas whose newer
peripherals (ADC, USART0, timer masks, pin-change interrupts) live in extended
I/O. The 168 and 328P have two-word (JMP) vectors, the 48 and 88 one-word ones."""

from chips.common import Chip, Kind

PINS_PDIP28 = [
    r"PC6 (PCINT14/\RESET)", "PD0 (PCINT16/RXD)", "PD1 (PCINT17/TXD)", "PD2 (PCINT18/INT0)",
    "PD3 (PCINT19/OC2B/INT1)", "PD4 (PCINT20/XCK/T0)", "VCC", "GND", "PB6 (PCINT6/XTAL1/TOSC1)",
    "PB7 (PCINT7/XTAL2/TOSC2)", "PD5 (PCINT21/OC0B/T1)", "PD6 (PCINT22/OC0A/AIN0)", "PD7 (PCINT23/AIN1)",
    "PB0 (PCINT0/CLKO/ICP1)", "PB1 (PCINT1/OC1A)", r"PB2 (PCINT2/\SS/OC1B)", "PB3 (PCINT3/OC2A/MOSI)",
    "PB4 (PCINT4/MISO)", "PB5 (SCK/PCINT5)", "AVCC", "AREF", "GND", "PC0 (ADC0/PCINT8)",
    "PC1 (ADC1/PCINT9)", "PC2 (ADC2/PCINT10)", "PC3 (ADC3/PCINT11)", "PC4 (ADC4/SDA/PCINT12)",
    "PC5 (ADC5/SCL/PCINT13)",
]


def _chip(name, arch):
    return Chip(
        name, arch, "PDIP 28", PINS_PDIP28,
        intconf=Kind((3, 3), "INT0 on PD2 and INT1 on PD3, sensed by ISCx1:0 in EICRA (extended I/O)"),
        compconf=Kind((3, 2), "AIN0 PD6, AIN1 PD7; ACME is bit 6 of ADCSRB and then ADMUX MUX2:0 picks the "
                              "minus input; bandgap 1.1 V"),
        adcconf=Kind(6, "ADMUX (REFS1:0, ADLAR bit 5, MUX3:0), ADCSRA, ADCL and ADCH lie in extended I/O "
                        "($78-$7C), so the compiler must reach them with LDS/STS"),
        eeconf=Kind(3, "EEPROM address in EEARH:EEARL, EECR with EEPM1:0 programming modes and "
                       "EEMPE/EEPE"),
        uartconf=Kind(5, "USART0 with every register (UDR0, UCSR0A-C, UBRR0L/H) in extended I/O, "
                         "UCSR0C at its own address"),
        instsetconf=Kind(1, "full AVR instruction set with hardware multiplier"),
        sp_reset_is_ramend=True,
        # MUX3:0 code 8 is the temperature sensor and 14, 15 are 1.1 V and GND; 9 and 10
        # are reserved codes, free for the comparator pins.
        analog={"AIN0": 9, "AIN1": 10},
        # The header's comment above TCCR0B's bits says TCCR0A.
        owners={"FOC0A": "TCCR0B"},
    )


ATMEGA48 = _chip("ATmega48", 4)
ATMEGA88 = _chip("ATmega88", 4)
ATMEGA168 = _chip("ATmega168", 5)
ATMEGA328P = _chip("ATmega328P", 5)
CHIPS = [ATMEGA48, ATMEGA88, ATMEGA168, ATMEGA328P]
