"""ATmega8515: 40-pin mega without ADC, pin-compatible with the AT90S8515, with
a USART whose UCSRC shares its address with UBRRH."""

from chips.common import Chip, Kind

PINS_PDIP40 = [
    "PB0 (OC0/T0)", "PB1 (T1)", "PB2 (AIN0)", "PB3 (AIN1)", r"PB4 (\SS)", "PB5 (MOSI)", "PB6 (MISO)",
    "PB7 (SCK)", r"\RESET", "PD0 (RXD)", "PD1 (TXD)", "PD2 (INT0)", "PD3 (INT1)", "PD4 (XCK)", "PD5 (OC1A)",
    r"PD6 (\WR)", r"PD7 (\RD)", "XTAL2", "XTAL1", "GND", "PC0 (A8)", "PC1 (A9)", "PC2 (A10)", "PC3 (A11)",
    "PC4 (A12)", "PC5 (A13)", "PC6 (A14)", "PC7 (A15)", "PE2 (OC1B)", "PE1 (ALE)", "PE0 (ICP/INT2)",
    "PA7 (AD7)", "PA6 (AD6)", "PA5 (AD5)", "PA4 (AD4)", "PA3 (AD3)", "PA2 (AD2)", "PA1 (AD1)", "PA0 (AD0)",
    "VCC",
]

ATMEGA8515 = Chip(
    "ATmega8515", 4, "PDIP 40", PINS_PDIP40,
    intconf=Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR"),
    compconf=Kind((2, 3), "no ADC, so no multiplexer: AIN0 PB2 against AIN1 PB3; bandgap 1.23 V typical"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(2, "EEPROM address in EEARH:EEARL, EECR with EEMWE/EEWE"),
    uartconf=Kind(3, "USART whose UCSRC shares I/O address $20 with UBRRH, told apart by URSEL"),
    instsetconf=Kind(1, "full AVR instruction set with hardware multiplier"),
    sp_reset_is_ramend=False,
    analog={"AIN0": 0, "AIN1": 1},
)

CHIPS = [ATMEGA8515]
