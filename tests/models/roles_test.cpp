// Register roles bound from a model's ".EQU" definitions (cases in data/tables.txt).

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "models/roles.h"
#include "support/sectiontable.h"

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
    using R = RegisterRoles;
    const std::map<std::string, int R::*> roles = {
        {"udr", &R::udr},       {"spl", &R::spl},       {"ucsra", &R::ucsra},   {"ucsrb", &R::ucsrb},
        {"ucsrc", &R::ucsrc},   {"ubrrl", &R::ubrrl},   {"ubrrh", &R::ubrrh},   {"eearl", &R::eearl},
        {"eearh", &R::eearh},   {"eecr", &R::eecr},     {"eedr", &R::eedr},     {"adcsra", &R::adcsra},
        {"adcsrb", &R::adcsrb}, {"acsr", &R::acsr},     {"acsrb", &R::acsrb},   {"eicra", &R::eicra},
        {"sfior", &R::sfior},   {"mcucr", &R::mcucr}};
    for (const velmora::test::TableRow& row : velmora::test::tablerows("tables.txt", "Roles")) {
        std::vector<std::string> lines;
        std::istringstream in(row[0]);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        EXPECT_EQ(velmora::bind(lines).*roles.at(row[1]), row.number(2)) << row.where;
    }
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
