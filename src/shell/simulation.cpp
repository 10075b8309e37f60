#include "shell/simulation.h"

#include "core/peripherals.h"
#include "core/peripheraltimes.h"
#include "image/hexload.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

Simulation::Simulation(Messenger& messenger, Clock& clock, SettingsAccess& settings, std::string datadirectory)
    : settings_(settings), run_(m_, messenger, clock, settings), datadirectory_(std::move(datadirectory)) {
    run_.phases = standardphases();
}

std::string Simulation::modeldirectory() const { return datadirectory_ + "/models"; }

bool Simulation::buildmodellist() {
    list_ = modellist(modeldirectory());
    error_ = list_.error;
    return error_.empty() && !list_.models.empty();
}

int Simulation::storedmodelindex() {
    const int count = static_cast<int>(list_.models.size());
    const int stored =
        settinginteger(settings_.getsetting(kMicrocontrollerModel, settingtext(static_cast<int32_t>(list_.defaultindex + 1))));
    if (stored >= 1 && stored <= count) return stored;
    settings_.putsetting(kMicrocontrollerModel, settingtext(static_cast<int32_t>(count)));
    return count;
}

bool Simulation::modelselect(int index) {
    if (index < 1 || index > static_cast<int>(list_.models.size())) return false;
    const ModelEntry& entry = list_.models[index - 1];
    m_.programbytes = 0;
    ModelOptions options;
    options.listiofirst = readswitch(settings_, kListIoFirst);
    options.unprogrammed = unprogrammedvalue(settings_);
    const ModelLoadResult result = modelload(modeldirectory(), entry.name, options, m_, definitions_);
    warnings_ = result.warnings;
    if (!result.ok) {
        error_ = result.message;
        return false;
    }
    error_.clear();
    index_ = index;
    m_.modelname = entry.name;
    installperipherals(m_);
    readperipheraltimes(m_, settings_);
    clean(m_);
    if (modelchanged) modelchanged();
    return true;
}

}  // namespace velmora
