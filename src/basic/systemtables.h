#pragma once
// The three tables of the BASIC Compiler window's Options menu, as text for the Viewer
// window: the system variables the compiler knows of a model, its named bits, and its
// interrupts. Rows are tab-separated and end in "\n".

#include <string>

#include "basic/basicmodel.h"

namespace velmora {

// "Name", "Type", "Address": each system name as Byte with its address, or as Bit with its
// byte address and bit number.
std::string systemvariablestable(const BasicModel& model);

// "Name", "Value", "Register": each named bit with its number and its register's address.
std::string systembitnamestable(const BasicModel& model);

// "Name", "Vector", "Description": each interrupt with its vector's word address.
std::string systeminterruptstable(const BasicModel& model);

}  // namespace velmora
