#include "models/roles.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "core/numbers.h"
#include "models/modeltext.h"

namespace velmora {

namespace {

using models::trim;

// Upper case, tabs as blanks, comment cut, runs of blanks reduced, trimmed.
std::string cleandefinition(std::string_view line) {
    std::string text = uppercase(line.substr(0, line.find(';')));
    std::string squeezed;
    for (char c : text) {
        if (c == '\t') c = ' ';
        if (c == ' ' && !squeezed.empty() && squeezed.back() == ' ') continue;
        squeezed.push_back(c);
    }
    return trim(squeezed);
}

// Name to data address, first definition kept.
std::map<std::string, int, std::less<>> readdefinitions(const std::vector<std::string>& lines) {
    std::map<std::string, int, std::less<>> symbols;
    for (const std::string& line : lines) {
        const std::string text = cleandefinition(line);
        if (!text.starts_with(".EQU ")) continue;
        const size_t equals = text.find('=');
        if (equals == std::string::npos) continue;
        const std::string name = trim(std::string_view(text).substr(5, equals - 5));
        const int value = parsenumber16(trim(std::string_view(text).substr(equals + 1)));
        if (name.empty() || value >= kNotANumber16) continue;
        symbols.emplace(name, value <= 0x3F ? value + 32 : value);
    }
    return symbols;
}

struct Role {
    int RegisterRoles::*address;
    std::array<std::string_view, 3> names;  // alternatives, first match wins
};

const Role kRoles[] = {
    {&RegisterRoles::sreg, {"SREG"}},
    {&RegisterRoles::sph, {"SPH"}},
    {&RegisterRoles::spl, {"SPL", "SP"}},
    {&RegisterRoles::eecr, {"EECR"}},
    {&RegisterRoles::eedr, {"EEDR"}},
    {&RegisterRoles::eearl, {"EEARL", "EEAR"}},
    {&RegisterRoles::eearh, {"EEARH"}},
    {&RegisterRoles::udr, {"UDR", "UDR0"}},
    {&RegisterRoles::ucsra, {"UCSRA", "UCSR0A", "USR"}},
    {&RegisterRoles::ucsrb, {"UCSRB", "UCSR0B", "UCR"}},
    {&RegisterRoles::ucsrc, {"UCSRC", "UCSR0C"}},
    {&RegisterRoles::ubrrl, {"UBRRL", "UBRR0L", "UBRR"}},
    {&RegisterRoles::ubrrh, {"UBRRH", "UBRR0H", "UBRRHI"}},
    {&RegisterRoles::admux, {"ADMUX"}},
    {&RegisterRoles::adcsra, {"ADCSRA", "ADCSR"}},
    {&RegisterRoles::adch, {"ADCH"}},
    {&RegisterRoles::adcl, {"ADCL"}},
    {&RegisterRoles::adcsrb, {"ADCSRB"}},
    {&RegisterRoles::acsr, {"ACSR", "ACSRA"}},
    {&RegisterRoles::acsrb, {"ACSRB"}},
    {&RegisterRoles::sfior, {"SFIOR"}},
    {&RegisterRoles::mcucr, {"MCUCR"}},
    {&RegisterRoles::eicra, {"EICRA"}},
};

}  // namespace

void bindroles(const std::vector<std::string>& lines, RegisterRoles& roles) {
    const auto symbols = readdefinitions(lines);
    auto lookup = [&symbols](std::string_view name) {
        const auto it = symbols.find(name);
        return it == symbols.end() ? -1 : it->second;
    };
    roles = RegisterRoles{};
    for (const Role& role : kRoles)
        for (std::string_view name : role.names) {
            if (name.empty()) break;
            if (const int address = lookup(name); address >= 0) {
                roles.*role.address = address;
                break;
            }
        }
    for (int port = 0; port < kPortCount; ++port) {
        const std::string letter(1, static_cast<char>('A' + port));
        const int data = lookup("PORT" + letter);
        roles.portexists[port] = data >= 0;
        roles.port[port] = std::max(data, 0);
        roles.pin[port] = std::max(lookup("PIN" + letter), 0);
        roles.ddr[port] = std::max(lookup("DDR" + letter), 0);
    }
}

}  // namespace velmora
