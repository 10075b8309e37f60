// The libFuzzer entry of one target; the build names the body in VELMORA_FUZZ_BODY.

#include "fuzztargets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return velmora::fuzz::VELMORA_FUZZ_BODY(data, size);
}
