#include "fuzztargets.h"

#include <array>

namespace velmora::fuzz {

std::span<const FuzzTarget> fuzztargets() {
    static constexpr std::array<FuzzTarget, 8> kTargets{{
        {"hex", fuzz_hex},
        {"asm", fuzz_asm},
        {"disasm", fuzz_disasm},
        {"model", fuzz_model},
        {"settings", fuzz_settings},
        {"cli", fuzz_cli},
        {"basic", fuzz_basic},
        {"elf", fuzz_elf},
    }};
    return kTargets;
}

}  // namespace velmora::fuzz
