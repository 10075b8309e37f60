#pragma once
// The assembler's messages, as the listing's error rows and the windows show them.

namespace velmora::asmmessage {

inline constexpr const char* kLabelTooLong = "Labels can't be longer than 32 characters.";
inline constexpr const char* kDuplicateLabel = "Duplicate label.";
inline constexpr const char* kArgumentCount = "Invalid argument.";
inline constexpr const char* kUnrecognized = "Unrecognized instruction.";
inline constexpr const char* kOrgArgument = "Invalid argument of the .ORG directive.";
inline constexpr const char* kEquSyntax = "Incorrect syntax of the .EQU directive.";
inline constexpr const char* kDuplicateName = "Duplicate label name.";
inline constexpr const char* kEquArgument = "Invalid argument of the .EQU directive.";
inline constexpr const char* kInstructionArgument = "Invalid argument of the instruction.";
inline constexpr const char* kDbArgument = "Invalid argument of the .DB directive.";
inline constexpr const char* kDwArgument = "Invalid argument of the .DW directive.";

}  // namespace velmora::asmmessage
