#pragma once
// Every input a user can hand the program, each driven through the library function the
// program itself calls. The same bodies run under libFuzzer (the fuzz tree) and replay the
// saved inputs in the ordinary test trees. A body returns 0; a crash, a sanitizer report or
// a broken invariant (__builtin_trap) is a finding.

#include <cstddef>
#include <cstdint>
#include <span>

namespace velmora::fuzz {

int fuzz_hex(const uint8_t* data, size_t size);
int fuzz_asm(const uint8_t* data, size_t size);
int fuzz_disasm(const uint8_t* data, size_t size);
int fuzz_model(const uint8_t* data, size_t size);
int fuzz_settings(const uint8_t* data, size_t size);
int fuzz_cli(const uint8_t* data, size_t size);
int fuzz_basic(const uint8_t* data, size_t size);
int fuzz_elf(const uint8_t* data, size_t size);

struct FuzzTarget {
    const char* name;  // the folder name of its corpus and regressions
    int (*run)(const uint8_t* data, size_t size);
};
std::span<const FuzzTarget> fuzztargets();

// A finding that is no crash: the harness stops the run the way a sanitizer would.
[[noreturn]] inline void invariantbroken() { __builtin_trap(); }

}  // namespace velmora::fuzz
