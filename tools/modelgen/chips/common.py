"""What every chip supplement shares: the record of one chip, and the rules that
hold for all AVR parts alike (which bits are flags or read-only, reset values
that the data sheets give for registers of the same name, which bit pair of a
vector is its enable and its flag).

The simulator attaches behaviour to the kind numbers of a model; the meaning
of each number is summed up here so that the per-chip reasons can refer to it.

intconf a,b (external interrupts, per pin and sense-control register):
    INT0: 2 PD2/MCUCR, 3 PD2/EICRA, 4 PD0/EICRA, 5 PB2/MCUCR, 6 PB6/MCUCR,
          7 PB1/MCUCR.  INT1: 2 PD3/MCUCR, 3 PD3/EICRA, 4 PD1/EICRA,
          5 PA2/MCUCR bits 1-0.  1: no such pin.
adcconf: 1 none; 2 ADLAR in ADCSRB bit 4, 6-bit MUX in ADMUX; 3 and 7 ADLAR in
    ADMUX, REFS1:0 in ADMUX, I/O space; 4 as 3 with REFS2 in ADMUX bit 4;
    5 three-bit MUX, ADMUX bit 6 picks the bandgap, no ADLAR, register ADCSR;
    6 as 3 but the ADC registers lie in extended I/O (LDS/STS); 8 MUX5 and
    REFS2 in ADCSRB.  The simulator reads ADMUX bits 3-0 as the channel for
    all but 5, and the BASIC compiler emits its ADC routine by this number.
compconf kind,bandgap,plus,minus: kind 2 fixed AIN1 on the minus input;
    3 ACME in ADCSRB bit 6; 4 ACME in SFIOR bit 3; 5 ACME in ACSR bit 2 with
    ADMUX bits 3-0; 6 ACSRB input selection.  Bandgap: 1 none, 2 1.1 V,
    3 1.23 V, 4 1.18 V, 5 1.22 V.  plus and minus are the analog channels of
    the AIN0 and AIN1 pins.
eeconf: 1 none; 2 EEARH:EEARL, EECR with EEMWE/EEWE; 3 EEARH:EEARL, EECR
    with the programming-mode bits EEPM1:0 (EEMPE/EEPE); 4 one-byte EEAR,
    EEMWE/EEWE; 5 one-byte EEAR with EEPM1:0.  The simulator treats 2 to 6
    alike; the compiler writes EEARL (and EEARH) for 2, 3, 6 and EEAR for 4, 5.
uartconf: 1 none; 2 separate UCSRC and UBRRH; 3 UCSRC shares its address with
    UBRRH (URSEL); 4 USART0 with UBRR0H and UCSR0C in extended I/O; 5 USART0
    wholly in extended I/O; 6 UBRRHI style UART; 7 classic UART (UBRR, USR,
    UCR, one receive buffer); 8 USART0 with UCSR0C shared with UBRR0H in I/O.
instsetconf: 1 full instruction set; 2 no X/Y pointers and no ADIW/SBIW (avr1).
"""

import re


class Kind:
    """A kind number with the reason the chip gets it."""

    def __init__(self, value, why):
        self.value = value
        self.why = why


class Chip:
    def __init__(self, name, arch, package, pins, *, intconf, compconf, adcconf, eeconf, uartconf,
                 instsetconf, sp_reset_is_ramend, analog=None, owners=None, vector_bits=None,
                 masks=None, extra_names=None):
        self.name = name                  # "ATmega32"
        self.macro = f"__AVR_{name}__"   # what avr-gcc defines for -mmcu
        self.arch = arch                  # __AVR_ARCH__ of the part
        self.package = package            # "PDIP 40"
        self.pins = pins                  # data-sheet pin captions, pin 1 first
        self.intconf = intconf            # Kind with value (a, b)
        self.compconf = compconf          # Kind with value (kind, bandgap); channels come from the pins
        self.adcconf = adcconf
        self.eeconf = eeconf
        self.uartconf = uartconf
        self.instsetconf = instsetconf
        self.sp_reset_is_ramend = sp_reset_is_ramend  # newer parts load SP with RAMEND at reset
        self.analog = analog or {}        # "AIN0"/"AIN1" -> channel, for comparator pins without an ADC input
        self.owners = owners or {}        # first bit of a header group -> owner register (None: not a register's bits)
        self.vector_bits = vector_bits or {}  # vector -> (enable bit, flag bit), where the common rule does not fit
        self.masks = masks or {}          # register -> write mask, beyond the common rules
        self.extra_names = extra_names or {}  # further .equ names -> register, for the compiler's routines

    @property
    def filename(self):
        return self.name.lower() + ".cfg"


# --- names ---------------------------------------------------------------------

# When avr-libc gives one address several names, the model's register list shows
# the data sheet's current name; the others stay as .equ definitions.
PREFERRED_NAMES = [
    "SPL", "GICR", "ADCSRA", "MCUCSR", "SPMCSR", "OSCCAL", "UCSRC", "UCSR0C", "UCSR1C", "EEAR",
    "UDR", "OCR1AL", "OCR1AH", "OCR1BL", "OCR1BH", "WDTCSR",
]

# Prose that older headers put above a group of bit numbers, and the register it means.
OWNER_PROSE = {
    "eeprom control register": "EECR",
    "eect - eeprom control register": "EECR",
    "general interrupt mask register": "GIMSK",
    "general interrupt control register": "GICR",
    "general interrupt flag register": "GIFR",
    "timer/counter interrupt mask register": "TIMSK",
    "timer/counter interrupt flag register": "TIFR",
    "mcu general control register": "MCUCR",
    "mcu control register": "MCUCR",
    "mcu control and status register": "MCUCSR",
    "extended mcu control register": "EMCUCR",
    "store program memory control register": "SPMCR",
    "timer/counter 0 control register": "TCCR0",
    "timer/counter 1 control register": "TCCR1A",
    "timer/counter 1 control and status register": "TCCR1B",
    "watchdog timer control register": "WDTCR",
    "special function io register": "SFIOR",
    "usart control and status register a": "UCSRA",
    "usart control and status register b": "UCSRB",
    "usart control and status register c": "UCSRC",
    "spi status register": "SPSR",
    "spi control register": "SPCR",
    "uart status register": "USR",
    "uart control register": "UCR",
    "analog comparator control and status register": "ACSR",
}

_PORT_PROSE = re.compile(r"^(data register|data direction register|input pins), port ([a-g])$")


def owner_from_prose(text):
    """Register named by a header's prose comment, or "" when the prose is unknown."""
    key = " ".join(text.lower().split())
    if key.endswith("(generic)"):
        return None  # names for any register of a kind ("PORT7", "CS2"), owned by none
    if key in OWNER_PROSE:
        return OWNER_PROSE[key]
    m = _PORT_PROSE.match(key)
    if m:
        prefix = {"data register": "PORT", "data direction register": "DDR", "input pins": "PIN"}[m.group(1)]
        return prefix + m.group(2).upper()
    return ""


# --- write masks and reset values ---------------------------------------------------

# Flags that hardware sets and a program clears by writing one: the program cannot
# set them, so they are masked; the interrupt logic clears them on a written one.
FLAG_BITS = re.compile(r"^(TOV\d*|OCF\d*[ABC]?|ICF\d*|INTF\d*|PCIF\d*|ADIF|ACI|TXC\d*|SPIF|TWINT|WDIF|WDTIF|"
                       r"USISIF|USIOIF|USIPF)$")
# Status bits that only hardware writes.
READONLY_BITS = re.compile(r"^(ACO|RXC\d*|UDRE\d*|FE\d*|DOR\d*|PE|UPE\d*|WCOL|TWWC|TWS[3-7]|RWWSB|USIDC|"
                           r"TCN\dUB|OCR\d[AB]?UB|TCR\d[AB]?UB|PLOCK)$")
# Registers that a program can only read.
READONLY_REGISTERS = re.compile(r"^(PIN[A-G]|ADCL|ADCH)$")
# Registers that avr-gcc's start-up code and the core itself write whole.
WHOLE_REGISTERS = {"SREG", "SPL", "SPH", "SP"}

# Reset values that are the same wherever a register of this name exists.
RESET_VALUES = {
    "UCSRA": 0x20, "UCSR0A": 0x20, "UCSR1A": 0x20, "USR": 0x20,  # UDRE: transmit buffer empty
    "TWSR": 0xF8, "TWAR": 0xFE, "TWDR": 0xFF,
    "MCUSR": 0x01, "MCUCSR": 0x01,  # a simulated start is a power-on reset: PORF
}
# UCSRnC: character size 8 bits (UCSZ1:0 set); URSEL reads as one where it exists.
USART_C = re.compile(r"^UCSR\d?C$")


# --- interrupt enable and flag bits ---------------------------------------------------

def vector_bit_candidates(vector):
    """(enable, flag) bit-name pairs that a vector of this avr-libc name may use, best first."""
    n = re.search(r"(\d)", vector)
    d = n.group(1) if n else ""
    rules = [
        (r"^INT\d$", [(f"INT{d}", f"INTF{d}")]),
        (r"^(ANA_COMP|ANALOG_COMP)$", [("ACIE", "ACI")]),
        (r"^ADC$", [("ADIE", "ADIF")]),
        (r"^(EE_RDY|EE_READY|EEPROM_READY)$", [("EERIE", "EEWE"), ("EERIE", "EEPE")]),
        (r"^(SPM_RDY|SPM_READY)$", [("SPMIE", "SPMEN"), ("SPMIE", "SELFPRGEN")]),
        (r"^PCINT\d?$", [(f"PCIE{d}", f"PCIF{d}"), ("PCIE", "PCIF")]),
        (r"^IO_PINS$", [("PCIE", "PCIF")]),
        (r"^SPI_STC$", [("SPIE", "SPIF")]),
        (r"^TWI$", [("TWIE", "TWINT")]),
        (r"^(TIM|TIMER)\d_(COMP|CMP)([ABC])$", None),
        (r"^TIMER\d_COMP\d?$", None),
        (r"^(TIM|TIMER)\d_OVF\d?$", [(f"TOIE{d}", f"TOV{d}")]),
        (r"^(TIM|TIMER)\d_CAPT\d?$", [(f"TICIE{d}", f"ICF{d}"), (f"ICIE{d}", f"ICF{d}")]),
        (r"^(UART|USART)_(RX|RXC)$", [("RXCIE", "RXC"), ("RXCIE0", "RXC0")]),
        (r"^(UART|USART)_UDRE$", [("UDRIE", "UDRE"), ("UDRIE0", "UDRE0")]),
        (r"^(UART|USART)_(TX|TXC)$", [("TXCIE", "TXC"), ("TXCIE0", "TXC0")]),
        (r"^USART\d_(RX|RXC)$", [(f"RXCIE{d}", f"RXC{d}")]),
        (r"^USART\d_UDRE$", [(f"UDRIE{d}", f"UDRE{d}")]),
        (r"^USART\d_(TX|TXC)$", [(f"TXCIE{d}", f"TXC{d}")]),
        (r"^USI_(START|STRT)$", [("USISIE", "USISIF")]),
        (r"^USI_(OVF|OVERFLOW)$", [("USIOIE", "USIOIF")]),
        (r"^(WDT|WDT_OVERFLOW)$", [("WDIE", "WDIF"), ("WDTIE", "WDTIF")]),
    ]
    for pattern, pairs in rules:
        m = re.match(pattern, vector)
        if not m:
            continue
        if pairs is not None:
            return pairs
        # Compare match: "TIMER1_COMPA", "TIM0_COMPB", "TIMER1_CMPA", "TIMER2_COMP", "TIMER1_COMP1".
        letter = m.group(3) if m.lastindex and m.lastindex >= 3 else ""
        if letter:
            return [(f"OCIE{d}{letter}", f"OCF{d}{letter}")]
        return [(f"OCIE{d}", f"OCF{d}"), (f"OCIE{d}A", f"OCF{d}A")]
    return []


def describe(vector):
    """The interrupt's text for lists, in the data sheets' words, from its avr-libc name."""
    n = re.search(r"(\d)", vector)
    d = n.group(1) if n else ""
    m = re.match(r"^(TIM|TIMER)(\d)_(COMP|CMP|OVF|CAPT)([ABC]?)\d?$", vector)
    if m:
        event = {"COMP": "Compare Match", "CMP": "Compare Match", "OVF": "Overflow", "CAPT": "Capture Event"}
        return f"Timer/Counter{m.group(2)} {event[m.group(3)]} {m.group(4)}".rstrip()
    m = re.match(r"^(UART|USART\d?)_(RX|RXC|UDRE|TX|TXC)$", vector)
    if m:
        event = {"RX": "Rx Complete", "RXC": "Rx Complete", "UDRE": "Data Register Empty", "TX": "Tx Complete",
                 "TXC": "Tx Complete"}
        return f"{m.group(1)} {event[m.group(2)]}"
    fixed = [
        (r"^INT\d$", f"External Interrupt Request {d}"),
        (r"^PCINT\d$", f"Pin Change Interrupt Request {d}"),
        (r"^(PCINT|IO_PINS)$", "Pin Change Interrupt"),
        (r"^(WDT|WDT_OVERFLOW)$", "Watchdog Time-out"),
        (r"^SPI_STC$", "SPI Serial Transfer Complete"),
        (r"^ADC$", "ADC Conversion Complete"),
        (r"^(EE_RDY|EE_READY|EEPROM_READY)$", "EEPROM Ready"),
        (r"^(SPM_RDY|SPM_READY)$", "Store Program Memory Ready"),
        (r"^(ANA_COMP|ANALOG_COMP)$", "Analog Comparator"),
        (r"^TWI$", "2-wire Serial Interface"),
        (r"^USI_(START|STRT)$", "USI Start Condition"),
        (r"^USI_(OVF|OVERFLOW)$", "USI Counter Overflow"),
    ]
    for pattern, text in fixed:
        if re.match(pattern, vector):
            return text
    raise ValueError(f"no description for vector {vector}")


# Names the simulator gives polarity 0: the "ready" interrupts fire while their bit is clear.
POLARITY_ZERO_NAMES = {"EE_RDY": "ERDY", "EE_READY": "ERDY", "EEPROM_READY": "ERDY",
                       "SPM_RDY": "SPMR", "SPM_READY": "SPMR"}
