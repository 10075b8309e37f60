// Register roles bound from a model's ".EQU" definitions.

#include <gtest/gtest.h>

#include "models/roles.h"

namespace velmora {
namespace {

RegisterRoles bind(const std::vector<std::string>& lines) {
    RegisterRoles roles;
    bindroles(lines, roles);
    return roles;
}

TEST(Roles, DefiningPortxMarksThePortAsExisting) {
    const RegisterRoles r = bind({".equ PORTB = $18", ".equ PINB = $16", ".equ DDRB = $17", ".equ PINC = $13",
                                  ".equ DDRC = $14", ".equ PORTG = $65"});
    EXPECT_TRUE(r.portexists[1]);
    EXPECT_EQ(r.port[1], 0x38);
    EXPECT_EQ(r.pin[1], 0x36);
    EXPECT_EQ(r.ddr[1], 0x37);
    // PINC and DDRC alone do not make port C.
    EXPECT_FALSE(r.portexists[2]);
    EXPECT_EQ(r.pin[2], 0x33);
    EXPECT_TRUE(r.portexists[6]);
    EXPECT_EQ(r.port[6], 0x65);
    for (int port : {0, 3, 4, 5}) {
        EXPECT_FALSE(r.portexists[port]);
        EXPECT_EQ(r.port[port], 0);
    }
}

TEST(Roles, FirstAlternativeWinsWhateverTheLineOrderAndIoAddressesGetThirtyTwoAdded) {
    struct {
        std::vector<std::string> lines;
        int RegisterRoles::*role;
        int address;
    } cases[] = {
        {{".equ UDR = $00"}, &RegisterRoles::udr, 0x20},  {{".equ UDR = $3F"}, &RegisterRoles::udr, 0x5F},
        {{".equ UDR = $40"}, &RegisterRoles::udr, 0x40},  {{".equ UDR = $C6"}, &RegisterRoles::udr, 0xC6},
        {{".equ UDR = 0x0C"}, &RegisterRoles::udr, 0x2C}, {{".equ UDR = 12"}, &RegisterRoles::udr, 0x2C},
        {{".equ UDR = 0CH"}, &RegisterRoles::udr, 0x2C},  {{".equ UDR = %1100"}, &RegisterRoles::udr, 0x2C},
        {{".equ UDR = $100"}, &RegisterRoles::udr, 0x100},
        {{".equ UDR0 = $C6", ".equ UDR = $0C"}, &RegisterRoles::udr, 0x2C},
        {{".equ UDR0 = $C6"}, &RegisterRoles::udr, 0xC6},
        {{".equ SP = $3D"}, &RegisterRoles::spl, 0x5D},
        {{".equ SP = $3C", ".equ SPL = $3D"}, &RegisterRoles::spl, 0x5D},
        {{".equ USR = $0B", ".equ UCSR0A = $C0"}, &RegisterRoles::ucsra, 0xC0},
        {{".equ USR = $0B"}, &RegisterRoles::ucsra, 0x2B},
        {{".equ UCR = $0A"}, &RegisterRoles::ucsrb, 0x2A},
        {{".equ UCSR0C = $C2"}, &RegisterRoles::ucsrc, 0xC2},
        {{".equ UBRR = $09", ".equ UBRR0L = $C4"}, &RegisterRoles::ubrrl, 0xC4},
        {{".equ UBRR = $09"}, &RegisterRoles::ubrrl, 0x29},
        {{".equ UBRRHI = $03"}, &RegisterRoles::ubrrh, 0x23},
        {{".equ UBRRHI = $03", ".equ UBRR0H = $C5"}, &RegisterRoles::ubrrh, 0xC5},
        {{".equ EEAR = $1E"}, &RegisterRoles::eearl, 0x3E},
        {{".equ EEAR = $1E", ".equ EEARL = $1F"}, &RegisterRoles::eearl, 0x3F},
        {{".equ ADCSR = $06"}, &RegisterRoles::adcsra, 0x26},
        {{".equ ACSRA = $08"}, &RegisterRoles::acsr, 0x28},
        {{".equ ACSRB = $09"}, &RegisterRoles::acsrb, 0x29},
        {{".equ EICRA = $69"}, &RegisterRoles::eicra, 0x69},
        {{".equ SFIOR = $30"}, &RegisterRoles::sfior, 0x50},
        {{".equ ADCSRB = $7B"}, &RegisterRoles::adcsrb, 0x7B},
        // Lines are cleaned before they are read: blanks, case, comments, other directives.
        {{".EQU EECR=$1C"}, &RegisterRoles::eecr, 0x3C},
        {{".equ EEDR = $1D ; .equ EEARH = $1F"}, &RegisterRoles::eedr, 0x3D},
        {{".equ EEDR = $1D ; .equ EEARH = $1F"}, &RegisterRoles::eearh, 0},
        {{".equ MCUCR = MCUCSR"}, &RegisterRoles::mcucr, 0},
        {{".equ = $12", ".equ UDR = $0C", ".equ UDR = $2C"}, &RegisterRoles::udr, 0x2C},  // the first value stays
    };
    for (const auto& c : cases) EXPECT_EQ(bind(c.lines).*c.role, c.address) << c.lines.front();
    const RegisterRoles r = bind({"   .equ\tportb   =  $18   ; the data register", "; .equ PORTA = $1B",
                                  ".set PORTC = $15", ".equ PORTD"});
    EXPECT_EQ(std::vector<bool>(r.portexists.begin(), r.portexists.begin() + 4),
              std::vector<bool>({false, true, false, false}));
    EXPECT_EQ(r.port[1], 0x38);
}

TEST(Roles, UndefinedRolesStayAtZeroAndBindingStartsAfresh) {
    RegisterRoles roles;
    bindroles({".equ PORTA = $1B", ".equ ADMUX = $07"}, roles);
    bindroles({".equ ADCH = $05"}, roles);
    EXPECT_FALSE(roles.portexists[0]);
    EXPECT_EQ(roles.admux, 0);
    EXPECT_EQ(roles.adch, 0x25);
    EXPECT_EQ(roles.udr, 0);
    EXPECT_EQ(roles.sreg, 0);
}

}  // namespace
}  // namespace velmora
