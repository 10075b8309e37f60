"""ATmega8: 28-pin mega with 8 KB flash, one-word (RJMP) vectors, ADC on port C."""

from chips.common import Chip, Kind

PINS_PDIP28 = [
    r"PC6 (\RESET)", "PD0 (RXD)", "PD1 (TXD)", "PD2 (INT0)", "PD3 (INT1)", "PD4 (XCK/T0)", "VCC", "GND",
    "PB6 (XTAL1/TOSC1)", "PB7 (XTAL2/TOSC2)", "PD5 (T1)", "PD6 (AIN0)", "PD7 (AIN1)", "PB0 (ICP1)",
    "PB1 (OC1A)", r"PB2 (\SS/OC1B)", "PB3 (MOSI/OC2)", "PB4 (MISO)", "PB5 (SCK)", "AVCC", "AREF", "GND",
    "PC0 (ADC0)", "PC1 (ADC1)", "PC2 (ADC2)", "PC3 (ADC3)", "PC4 (ADC4/SDA)", "PC5 (ADC5/SCL)",
]

ATMEGA8 = Chip(
    "ATmega8", 4, "PDIP 28", PINS_PDIP28,
    intconf=Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR"),
    compconf=Kind((4, 3), "AIN0 PD6, AIN1 PD7; ACME is bit 3 of SFIOR and then ADMUX MUX2:0 picks the "
                          "minus input; bandgap 1.23 V typical in the data sheet of the first revisions "
                          "(later ones say 1.30 V, which no kind offers)"),
    adcconf=Kind(3, "ADMUX holds REFS1:0, ADLAR (bit 5) and MUX3:0, ADC registers in I/O space; avr-libc "
                    "names the control register both ADCSR and ADCSRA, the compiler uses ADCSRA"),
    eeconf=Kind(2, "EEPROM address in EEARH:EEARL, EECR with EEMWE/EEWE (no programming modes)"),
    uartconf=Kind(3, "USART whose UCSRC shares I/O address $20 with UBRRH, told apart by URSEL"),
    instsetconf=Kind(1, "full AVR instruction set with hardware multiplier"),
    sp_reset_is_ramend=False,
    # The PDIP package has ADC0-5; codes 8-13 of MUX3:0 are reserved, so the comparator
    # pins take channels 8 and 9 where no conversion can reach them by accident.
    analog={"AIN0": 8, "AIN1": 9},
)

CHIPS = [ATMEGA8]
