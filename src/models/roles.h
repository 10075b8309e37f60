#pragma once
// Binds the register roles the core uses (ports, EEPROM, USART, ADC, comparator, control)
// to the addresses that a model's ".EQU" definitions give them.

#include <string>
#include <vector>

#include "core/machine.h"

namespace velmora {

// Scans definition lines for ".EQU NAME = VALUE". For each role the first name of its
// alternatives that is defined wins; a name defined twice keeps its first value. Values at
// or below $3F are I/O addresses and get 32 added. Defining PORTx marks port x as existing.
// Roles no line defines are left at 0.
void bindroles(const std::vector<std::string>& lines, RegisterRoles& roles);

}  // namespace velmora
