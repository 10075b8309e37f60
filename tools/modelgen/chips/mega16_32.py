"""ATmega16 and ATmega32: the classic 40-pin megas, same pinout and peripherals,
16 and 32 KB of flash with two-word (JMP) vectors."""

from chips.common import Chip, Kind

PINS_PDIP40 = [
    "PB0 (XCK/T0)", "PB1 (T1)", "PB2 (INT2/AIN0)", "PB3 (OC0/AIN1)", r"PB4 (\SS)", "PB5 (MOSI)",
    "PB6 (MISO)", "PB7 (SCK)", r"\RESET", "VCC", "GND", "XTAL2", "XTAL1", "PD0 (RXD)", "PD1 (TXD)",
    "PD2 (INT0)", "PD3 (INT1)", "PD4 (OC1B)", "PD5 (OC1A)", "PD6 (ICP1)", "PD7 (OC2)",
    "PC0 (SCL)", "PC1 (SDA)", "PC2 (TCK)", "PC3 (TMS)", "PC4 (TDO)", "PC5 (TDI)", "PC6 (TOSC1)",
    "PC7 (TOSC2)", "AVCC", "GND", "AREF", "PA7 (ADC7)", "PA6 (ADC6)", "PA5 (ADC5)", "PA4 (ADC4)",
    "PA3 (ADC3)", "PA2 (ADC2)", "PA1 (ADC1)", "PA0 (ADC0)",
]


def _chip(name):
    return Chip(
        name, 5, "PDIP 40", PINS_PDIP40,
        intconf=Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR"),
        compconf=Kind((4, 3), "AIN0 PB2, AIN1 PB3; ACME is bit 3 of SFIOR and then ADMUX MUX2:0 picks "
                              "the minus input; bandgap 1.23 V typical"),
        adcconf=Kind(3, "ADMUX holds REFS1:0, ADLAR (bit 5) and MUX4:0, all ADC registers in I/O "
                        "space, control register named ADCSRA"),
        eeconf=Kind(2, "EEPROM address in EEARH:EEARL, EECR with EEMWE/EEWE (no programming modes)"),
        uartconf=Kind(3, "USART whose UCSRC shares I/O address $20 with UBRRH, told apart by URSEL; "
                         "the compiler writes $86 to UCSRC"),
        instsetconf=Kind(1, "full AVR instruction set (MUL, MOVW, JMP/CALL, X/Y/Z pointers)"),
        sp_reset_is_ramend=False,
        # Port A carries ADC0-7; the comparator pins take the next channels.
        analog={"AIN0": 8, "AIN1": 9},
    )


ATMEGA16 = _chip("ATmega16")
ATMEGA32 = _chip("ATmega32")
CHIPS = [ATMEGA16, ATMEGA32]
