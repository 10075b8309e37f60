#include "shell/modelselection.h"

#include "image/programcommands.h"
#include "shell/settingnames.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

std::optional<std::string> ModelSelection::refusal() const {
    if (sim_.machine().simulationrunning) return std::string(kStopSimulationFirst);
    const std::pair<int, const char*> blockers[] = {
        {windows::kDisassembler, kCloseDisassemblerFirst},
        {windows::kBreakpointsManager, kCloseBreakpointsFirst},
        {windows::kBasicCompiler, "Please close BASIC Compiler window first."},
        {windows::kAssembler, "Please close Assembler window first."},
    };
    for (const auto& [window, text] : blockers)
        if (registry_.isopen(window)) return std::string(text);
    return std::nullopt;
}

void ModelSelection::closedependentwindows() {
    std::vector<int> closing = {windows::kProgramMemoryEditor, windows::kEepromMemoryEditor, windows::kStackViewer};
    for (const PackageLayout& layout : packagelayouts()) closing.push_back(layout.window);
    for (int window : closing)
        if (registry_.isopen(window)) registry_.unload(window);
}

std::vector<ModelOption> ModelSelection::options() const {
    std::vector<ModelOption> result;
    const auto& models = sim_.models().models;
    for (size_t i = 0; i < models.size(); ++i)
        result.push_back({models[i].name + "  (" + models[i].description + ")",
                          static_cast<int>(i) + 1 == sim_.modelindex()});
    return result;
}

bool ModelSelection::finish(std::optional<int> index) {
    bool ok = true;
    if (index && *index != sim_.modelindex()) {
        settings_.putsetting(kMicrocontrollerModel, settingtext(static_cast<int32_t>(*index)));
        ok = sim_.modelselect(*index);
    }
    // The remembered files belong to the old model.
    for (const char* name : {kAutoStartHexFile, kAutoStartBasFile, kAutoStartAsmFile}) settings_.putsetting(name, "");
    return ok;
}

}  // namespace velmora
