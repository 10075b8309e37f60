#include "cli/session.h"

#include <chrono>
#include <cstdlib>
#include <ostream>

#include "cli/programinput.h"
#include "core/peripherals.h"
#include "core/textcase.h"
#include "models/datadirectory.h"
#include "models/modelfile.h"

namespace velmora {

void StreamMessenger::show(const std::string& text, MessageKind) {
    if (beforeshow) beforeshow();
    out_ << prefix << text << "\n";
}

double SteadyClock::now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

CliSession::CliSession(std::ostream& err) : err_(err), messenger_(err) {
    run_ = std::make_unique<RunControl>(machine_, messenger_, clock_, settings_);
}

std::string modeldirectory() { return datadirectory(VELMORA_SOURCE_DATA_DIR) + "/models"; }

std::optional<std::string> modelnamed(const std::optional<std::string>& name, std::ostream& err) {
    const ModelList list = modellist(modeldirectory());
    if (!list.error.empty()) {
        err << list.error << "\n";
        return std::nullopt;
    }
    if (!name) {
        if (list.defaultindex < 0) {
            err << "velmora-cli: no default model; name one with --model\n";
            return std::nullopt;
        }
        return list.models[static_cast<size_t>(list.defaultindex)].name;
    }
    for (const ModelEntry& entry : list.models)
        if (sameignoringcase(entry.name, *name)) return entry.name;
    err << "velmora-cli: no model named '" << *name << "'; 'velmora-cli models' lists them\n";
    return std::nullopt;
}

bool CliSession::selectmodel(const std::optional<std::string>& name) {
    const std::optional<std::string> model = modelnamed(name, err_);
    if (!model) return false;
    const ModelLoadResult result = modelload(modeldirectory(), *model, ModelOptions{}, machine_, definitions_);
    for (const std::string& warning : result.warnings) err_ << warning << "\n";
    if (!result.ok) {
        err_ << result.message << "\n";
        return false;
    }
    machine_.modelname = *model;
    installperipherals(machine_);
    run_->phases = standardphases();
    return true;
}

bool CliSession::setclock(const std::string& text) {
    char* end = nullptr;
    const double mhz = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || *end != '\0' || !(mhz > 0) || mhz > 1e6) {
        err_ << "velmora-cli: the clock must be a positive number of MHz, not '" << text << "'\n";
        return false;
    }
    machine_.clockfrequency = static_cast<float>(mhz);
    return true;
}

bool CliSession::loadprogram(const std::string& path) {
    messenger_.prefix = path + ": ";
    const bool loaded = loadprogramfile(machine_, path, messenger_, err_, &companions_);
    messenger_.prefix.clear();
    return loaded;
}

}  // namespace velmora
