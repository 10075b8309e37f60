"""ATmega162: 40-pin mega without ADC, with two USARTs whose UCSRnC share their
I/O addresses with UBRRnH, external memory interface, JMP vectors."""

from chips.common import Chip, Kind

PINS_PDIP40 = [
    "PB0 (OC0/T0)", "PB1 (OC2/T1)", "PB2 (RXD1/AIN0)", "PB3 (TXD1/AIN1)", r"PB4 (\SS/OC3B)", "PB5 (MOSI)",
    "PB6 (MISO)", "PB7 (SCK)", r"\RESET", "PD0 (RXD0)", "PD1 (TXD0)", "PD2 (INT0/XCK1)", "PD3 (INT1/ICP3)",
    "PD4 (TOSC1/XCK0/OC3A)", "PD5 (OC1A/TOSC2)", r"PD6 (\WR)", r"PD7 (\RD)", "XTAL2", "XTAL1", "GND",
    "PC0 (A8/PCINT8)", "PC1 (A9/PCINT9)", "PC2 (A10/PCINT10)", "PC3 (A11/PCINT11)", "PC4 (A12/TCK/PCINT12)",
    "PC5 (A13/TMS/PCINT13)", "PC6 (A14/TDO/PCINT14)", "PC7 (A15/TDI/PCINT15)", "PE2 (OC1B)", "PE1 (ALE)",
    "PE0 (ICP1/INT2)", "PA7 (AD7/PCINT7)", "PA6 (AD6/PCINT6)", "PA5 (AD5/PCINT5)", "PA4 (AD4/PCINT4)",
    "PA3 (AD3/PCINT3)", "PA2 (AD2/PCINT2)", "PA1 (AD1/PCINT1)", "PA0 (AD0/PCINT0)", "VCC",
]

ATMEGA162 = Chip(
    "ATmega162", 5, "PDIP 40", PINS_PDIP40,
    intconf=Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR"),
    compconf=Kind((2, 2), "no ADC, so no multiplexer: AIN0 PB2 against AIN1 PB3; bandgap 1.1 V typical"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(2, "EEPROM address in EEARH:EEARL, EECR with EEMWE/EEWE"),
    uartconf=Kind(8, "USART0 is the simulated one; its UCSR0C shares I/O address $20 with UBRR0H (URSEL0) "
                     "and its other registers are in I/O space, written with OUT"),
    instsetconf=Kind(1, "full AVR instruction set with hardware multiplier"),
    sp_reset_is_ramend=False,
    analog={"AIN0": 0, "AIN1": 1},
)

CHIPS = [ATMEGA162]
