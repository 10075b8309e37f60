// Model description files: the loader on a file of any content, then what the program builds
// from a model that loaded (the list entry, the assembler's and the compiler's views).

#include <fstream>
#include <string>

#include "assembler/asmassemble.h"
#include "basic/basicmodel.h"
#include "core/machine.h"
#include "fuzzsupport.h"
#include "fuzztargets.h"
#include "models/modelfile.h"

namespace velmora::fuzz {

int fuzz_model(const uint8_t* data, size_t size) {
    const std::filesystem::path folder = scratchfolder() / "models";
    std::filesystem::create_directories(folder);
    {
        std::ofstream out(folder / "atfuzz.cfg", std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    for (const bool listiofirst : {false, true}) {
        Machine m;
        ModelDefinitions definitions;
        const ModelLoadResult result = modelload(folder.string(), "ATfuzz", ModelOptions{listiofirst, 0xFF}, m, definitions);
        if (!result.ok) {
            if (result.message.empty()) invariantbroken();
            return 0;
        }
        (void)asmmodelof(m, definitions);
        (void)basicmodelof(m, definitions, "4.0 MHz", 4);
    }
    const ModelList list = modellist(folder.string());
    if (list.models.size() != 1) invariantbroken();
    return 0;
}

}  // namespace velmora::fuzz
