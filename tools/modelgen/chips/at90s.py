"""AT90S2313 and AT90S8515: the classic AVRs with a UART (UBRR, USR, UCR) and a
single receive buffer, no bandgap for the comparator."""

from chips.common import Chip, Kind

PINS_2313_PDIP20 = [
    r"\RESET", "PD0 (RXD)", "PD1 (TXD)", "XTAL2", "XTAL1", "PD2 (INT0)", "PD3 (INT1)", "PD4 (T0)", "PD5 (T1)",
    "GND", "PD6 (ICP)", "PB0 (AIN0)", "PB1 (AIN1)", "PB2", "PB3 (OC1)", "PB4", "PB5 (MOSI)", "PB6 (MISO)",
    "PB7 (SCK)", "VCC",
]

PINS_8515_PDIP40 = [
    "PB0 (T0)", "PB1 (T1)", "PB2 (AIN0)", "PB3 (AIN1)", r"PB4 (\SS)", "PB5 (MOSI)", "PB6 (MISO)", "PB7 (SCK)",
    r"\RESET", "PD0 (RXD)", "PD1 (TXD)", "PD2 (INT0)", "PD3 (INT1)", "PD4", "PD5 (OC1A)", r"PD6 (\WR)",
    r"PD7 (\RD)", "XTAL2", "XTAL1", "GND", "PC0 (A8)", "PC1 (A9)", "PC2 (A10)", "PC3 (A11)", "PC4 (A12)",
    "PC5 (A13)", "PC6 (A14)", "PC7 (A15)", "OC1B", "ALE", "ICP", "PA7 (AD7)", "PA6 (AD6)", "PA5 (AD5)",
    "PA4 (AD4)", "PA3 (AD3)", "PA2 (AD2)", "PA1 (AD1)", "PA0 (AD0)", "VCC",
]

_INT = Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR")
_UART = Kind(7, "classic UART: UBRR, USR and UCR, TXEN bit 3 and RXEN bit 4 of UCR, a single receive "
                "buffer with overrun (DOR); the compiler writes UBRR, USR and UCR")
_ISA = Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use")

AT90S2313 = Chip(
    "AT90S2313", 2, "PDIP 20", PINS_2313_PDIP20,
    intconf=_INT,
    compconf=Kind((2, 1), "AIN0 PB0 against AIN1 PB1, no multiplexer and no bandgap (bit 6 of ACSR is "
                          "reserved)"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(4, "128-byte EEPROM addressed by one register (EEAR), EECR with EEMWE/EEWE"),
    uartconf=_UART, instsetconf=_ISA,
    sp_reset_is_ramend=False,
    analog={"AIN0": 0, "AIN1": 1},
)

AT90S8515 = Chip(
    "AT90S8515", 2, "PDIP 40", PINS_8515_PDIP40,
    intconf=_INT,
    compconf=Kind((2, 1), "AIN0 PB2 against AIN1 PB3, no multiplexer and no bandgap (bit 6 of ACSR is "
                          "reserved)"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(2, "512-byte EEPROM addressed by EEARH:EEARL, EECR with EEMWE/EEWE"),
    uartconf=_UART, instsetconf=_ISA,
    sp_reset_is_ramend=False,
    analog={"AIN0": 0, "AIN1": 1},
)

CHIPS = [AT90S2313, AT90S8515]
