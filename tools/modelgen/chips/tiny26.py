"""ATtiny26: 20-pin tiny with an 11-channel ADC on ports A and B, USI, no USART."""

from chips.common import Chip, Kind

PINS_PDIP20 = [
    r"PB0 (MOSI/DI/SDA/\OC1A)", "PB1 (MISO/DO/OC1A)", r"PB2 (SCK/SCL/\OC1B)", "PB3 (OC1B)", "VCC", "GND",
    "PB4 (ADC7/XTAL1)", "PB5 (ADC8/XTAL2)", "PB6 (ADC9/INT0/T0)", r"PB7 (ADC10/\RESET)", "PA7 (ADC6/AIN1)",
    "PA6 (ADC5/AIN0)", "PA5 (ADC4)", "PA4 (ADC3)", "AVCC", "GND", "PA3 (AREF)", "PA2 (ADC2)", "PA1 (ADC1)",
    "PA0 (ADC0)",
]

ATTINY26 = Chip(
    "ATtiny26", 2, "PDIP 20", PINS_PDIP20,
    intconf=Kind((6, 1), "INT0 on PB6, sensed by ISC01:00 in MCUCR; there is no INT1"),
    compconf=Kind((5, 4), "AIN0 is PA6 (ADC5) and AIN1 PA7 (ADC6); ACME is bit 2 of ACSR itself and then "
                          "ADMUX MUX3:0 picks the minus input; bandgap 1.18 V"),
    adcconf=Kind(3, "ADMUX holds REFS1:0, ADLAR (bit 5) and MUX4:0, ADC registers in I/O space; the control "
                    "register is named ADCSR, so ADCSRA is defined beside it for the compiler's routine"),
    eeconf=Kind(4, "128-byte EEPROM addressed by one register (EEAR), EECR with EEMWE/EEWE"),
    uartconf=Kind(1, "no USART (the USI is not simulated)"),
    instsetconf=Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use"),
    sp_reset_is_ramend=False,
    extra_names={"ADCSRA": "ADCSR"},
    # One vector serves both pin-change groups; PCIE1 covers PA3, PA6, PA7 and PB4-PB7.
    vector_bits={"IO_PINS": ("PCIE1", "PCIF")},
)

CHIPS = [ATTINY26]
