"""ATtiny2313: 20-pin tiny with a USART (separate UCSRC and UBRRH), no ADC."""

from chips.common import Chip, Kind

PINS_PDIP20 = [
    r"PA2 (\RESET/dW)", "PD0 (RXD)", "PD1 (TXD)", "PA1 (XTAL2)", "PA0 (XTAL1)", "PD2 (CKOUT/XCK/INT0)",
    "PD3 (INT1)", "PD4 (T0)", "PD5 (OC0B/T1)", "GND", "PD6 (ICP)", "PB0 (AIN0/PCINT0)", "PB1 (AIN1/PCINT1)",
    "PB2 (OC0A/PCINT2)", "PB3 (OC1A/PCINT3)", "PB4 (OC1B/PCINT4)", "PB5 (MOSI/DI/SDA/PCINT5)",
    "PB6 (MISO/DO/PCINT6)", "PB7 (USCK/SCL/PCINT7)", "VCC",
]

ATTINY2313 = Chip(
    "ATtiny2313", 25, "PDIP 20", PINS_PDIP20,
    intconf=Kind((2, 2), "INT0 on PD2 and INT1 on PD3, both sensed by ISCx1:0 in MCUCR"),
    compconf=Kind((2, 2), "no ADC, so no multiplexer: AIN0 PB0 against AIN1 PB1; bandgap 1.1 V"),
    adcconf=Kind(1, "no ADC"),
    eeconf=Kind(5, "128-byte EEPROM addressed by one register (EEAR), EECR with EEPM1:0 and EEMPE/EEPE"),
    uartconf=Kind(2, "USART with UCSRC and UBRRH at addresses of their own ($03, $02), no URSEL; "
                     "the compiler writes $06 to UCSRC"),
    instsetconf=Kind(1, "X, Y and Z pointers, ADIW/SBIW: everything the compiler's routines use"),
    sp_reset_is_ramend=True,
    analog={"AIN0": 0, "AIN1": 1},
)

CHIPS = [ATTINY2313]
