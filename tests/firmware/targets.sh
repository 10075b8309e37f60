# Which program is built for which chip, at which clock; sourced by build.sh and
# make-expected.sh so that the HEX files and the host-computed outputs agree.

# The three chips that carry the full set: one with the USART in I/O space and
# UCSRC shared with UBRRH, one with it in extended I/O, and a 2 KiB tiny.
FULL_CHIPS="atmega32 atmega328p attiny2313"

# Programs whose expected output is computed on the host from the same source.
HOST_PROGRAMS="crc arith sort recurse eeprom printf float"
# Programs whose expected output follows from the command-line inputs (see firmware_test.cpp).
INPUT_PROGRAMS="adc int0 echo sum"
# Programs that drive a character LCD on PORTB (see firmware_test.cpp).
LCD_PROGRAMS="lcd lcdpoll"

# Every shipped ATmega model with a USART gets the hello program.
HELLO_CHIPS="atmega8 atmega16 atmega32 atmega48 atmega88 atmega168 atmega328p atmega64 atmega128 atmega162 atmega8515"

# programs_for CHIP: the programs built for that chip. The tiny has neither room for
# printf and the float library nor an ADC.
programs_for() {
    case "$1" in
    attiny2313) echo "crc arith sort recurse eeprom int0 echo sum $LCD_PROGRAMS" ;;
    *) echo "$HOST_PROGRAMS $INPUT_PROGRAMS $LCD_PROGRAMS" ;;
    esac
}

# cpu_hz CHIP: the clock each chip is built for; the tests pass the same clock.
cpu_hz() {
    case "$1" in
    atmega328p) echo 16000000 ;;
    *) echo 8000000 ;;
    esac
}

# chip_flags CHIP: defines that size the programs for the chip's memory.
chip_flags() {
    case "$1" in
    attiny2313) echo "-DSMALL_TARGET=1" ;;
    *) echo "" ;;
    esac
}
