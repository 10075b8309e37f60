"""ATmega64 and ATmega128: 64-pin megas with ports A-G, two USARTs and an
extended I/O area ($60-$FF) ahead of SRAM at $100. Modelled in the TQFP 64
package (they come in no DIP)."""

from chips.common import Chip, Kind

PINS_TQFP64 = [
    "PEN", "PE0 (RXD0/PDI)", "PE1 (TXD0/PDO)", "PE2 (XCK0/AIN0)", "PE3 (OC3A/AIN1)", "PE4 (OC3B/INT4)",
    "PE5 (OC3C/INT5)", "PE6 (T3/INT6)", "PE7 (ICP3/INT7)", r"PB0 (\SS)", "PB1 (SCK)", "PB2 (MOSI)",
    "PB3 (MISO)", "PB4 (OC0)", "PB5 (OC1A)", "PB6 (OC1B)", "PB7 (OC2/OC1C)", "PG3 (TOSC2)", "PG4 (TOSC1)",
    r"\RESET", "VCC", "GND", "XTAL2", "XTAL1", "PD0 (SCL/INT0)", "PD1 (SDA/INT1)", "PD2 (RXD1/INT2)",
    "PD3 (TXD1/INT3)", "PD4 (ICP1)", "PD5 (XCK1)", "PD6 (T1)", "PD7 (T2)", r"PG0 (\WR)", r"PG1 (\RD)",
    "PC0 (A8)", "PC1 (A9)", "PC2 (A10)", "PC3 (A11)", "PC4 (A12)", "PC5 (A13)", "PC6 (A14)", "PC7 (A15)",
    "PG2 (ALE)", "PA7 (AD7)", "PA6 (AD6)", "PA5 (AD5)", "PA4 (AD4)", "PA3 (AD3)", "PA2 (AD2)", "PA1 (AD1)",
    "PA0 (AD0)", "VCC", "GND", "PF7 (ADC7/TDI)", "PF6 (ADC6/TDO)", "PF5 (ADC5/TMS)", "PF4 (ADC4/TCK)",
    "PF3 (ADC3)", "PF2 (ADC2)", "PF1 (ADC1)", "PF0 (ADC0)", "AREF", "GND", "AVCC",
]


def _chip(name, arch):
    return Chip(
        name, arch, "TQFP 64", PINS_TQFP64,
        intconf=Kind((4, 4), "INT0 on PD0 and INT1 on PD1, sensed by ISCx1:0 in EICRA"),
        compconf=Kind((4, 3), "AIN0 PE2, AIN1 PE3; ACME is bit 3 of SFIOR and then ADMUX MUX2:0 picks the "
                              "minus input; bandgap 1.23 V typical"),
        adcconf=Kind(3, "ADMUX holds REFS1:0, ADLAR (bit 5) and MUX4:0, ADC registers in I/O space, "
                        "control register ADCSRA"),
        eeconf=Kind(2, "EEPROM address in EEARH:EEARL, EECR with EEMWE/EEWE"),
        uartconf=Kind(4, "USART0 is the simulated one: UDR0, UCSR0A/B and UBRR0L in I/O space, UBRR0H ($90) "
                         "and UCSR0C ($95) in extended I/O, each at its own address; USART1 stays plain "
                         "registers"),
        instsetconf=Kind(1, "full AVR instruction set with hardware multiplier"),
        sp_reset_is_ramend=False,
        # Port F carries ADC0-7; the comparator pins on port E take the next channels.
        analog={"AIN0": 8, "AIN1": 9},
        # avr-libc's comment above XMCRB's bits names XMCRA.
        owners={"XMBK": "XMCRB"},
    )


ATMEGA64 = _chip("ATmega64", 5)
ATMEGA128 = _chip("ATmega128", 51)
CHIPS = [ATMEGA64, ATMEGA128]
