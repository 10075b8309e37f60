// Compiles a generated BASIC program of 5,000 lines (declarations, labels, jumps, assembler
// rows) for the ATmega32, as the BASIC Compiler window's Compile does, and prints the time.
// Usage: velmora-bench-basic [LINES]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "basic/basiccompile.h"
#include "core/machine.h"
#include "models/modelfile.h"

int main(int argc, char** argv) {
    const int lines = argc > 1 ? std::atoi(argv[1]) : 5000;
    velmora::Machine machine;
    velmora::ModelDefinitions definitions;
    if (!velmora::modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", "ATmega32", {}, machine, definitions).ok)
        return 1;
    const velmora::BasicModel model = velmora::basicmodelof(machine, definitions, "8.0 MHz", 8);

    std::string source = "' generated\r\n";
    for (int i = 0; i < lines / 5; ++i) {
        const std::string n = std::to_string(i);
        source += "Dim v" + n + " As Byte\r\n";
        source += "l" + n + ": ASM: INC R17 ' count\r\n";
        source += "Goto l" + std::to_string(i / 2) + "\r\n";
        source += "Symbol s" + n + " = PORTB." + std::to_string(i % 8) + "\r\n";
        source += "ASM: LDS R18,0x60\r\n";
    }
    const auto start = std::chrono::steady_clock::now();
    const velmora::BasicCompileResult result = velmora::basiccompile(source, model, {});
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%d lines: %s, %d program words, %.3f s\n", lines, result.ok ? "compiled" : result.error.c_str(),
                result.outputwords, seconds);
    return result.ok ? 0 : 1;
}
