#pragma once
// A chip of the product's model files with its peripherals, for the memory tools' tests:
// programs given as words or as HEX files, run to their SLEEP.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/peripherals.h"
#include "core/runcontrol.h"
#include "core/usart.h"
#include "core/testmachine.h"
#include "image/hexload.h"
#include "models/modelfile.h"
#include "support/simfixture.h"

namespace velmora::test {

struct Chip {
    Machine m;
    RecordingMessenger messenger;
    ScriptedClock clock;
    MemorySettings settings;
    RunControl run{m, messenger, clock, settings};

    explicit Chip(const std::string& model) {
        ModelDefinitions definitions;
        const ModelLoadResult result =
            modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", model, ModelOptions{}, m, definitions);
        EXPECT_TRUE(result.ok) << model << ": " << result.message;
        m.modelname = model;
        installperipherals(m);
        run.phases = standardphases();
    }
    void loadhex(const std::string& path) { ASSERT_TRUE(hexload(m, path, messenger)) << path; }
    // Runs from the reset to the program's SLEEP.
    void runtosleep() {
        run.menuspeed(kRateUltimate);
        run.menustart();
    }
    std::string output() {
        std::string text;
        uint8_t bytes[kUsartOutputCapacity];
        while (const size_t n = usarttakeoutput(m, bytes, sizeof bytes)) text.append(bytes, bytes + n);
        return text;
    }
};

// A HEX file of the firmware tests, built by avr-gcc (tests/firmware/build.sh).
inline std::string firmware(const std::string& name) {
    return std::string(VELMORA_SOURCE_DATA_DIR) + "/../tests/firmware/hex/" + name;
}

}  // namespace velmora::test
