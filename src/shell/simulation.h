#pragma once
// The one simulated machine of the desktop program with the run control that drives it and
// the list of models it can be. Selecting a model rebuilds the machine from its file.

#include <functional>
#include <string>

#include "core/events.h"
#include "core/machine.h"
#include "core/runcontrol.h"
#include "models/modelfile.h"

namespace velmora {

class Simulation {
public:
    // `datadirectory` holds the models/ folder.
    Simulation(Messenger& messenger, Clock& clock, SettingsAccess& settings, std::string datadirectory);

    Machine& machine() { return m_; }
    const Machine& machine() const { return m_; }
    RunControl& run() { return run_; }
    const RunControl& run() const { return run_; }
    const std::string& datadirectory() const { return datadirectory_; }
    std::string modeldirectory() const;

    // Builds the list of models; false (with the message in `error()`) when there is none.
    bool buildmodellist();
    const ModelList& models() const { return list_; }
    const std::string& error() const { return error_; }

    // The stored "Microcontroller Model", counted from 1; a value outside the list becomes
    // the list's length (the last model) and is written back.
    int storedmodelindex();
    // Index (from 1) of the loaded model; 0 before the first load.
    int modelindex() const { return index_; }

    // Loads a model from the list (index from 1) and cleans the machine. False when the model
    // file is missing or damaged; `error()` then holds the message that ends the program.
    bool modelselect(int index);
    const ModelDefinitions& definitions() const { return definitions_; }
    // Messages of the last load that did not stop it.
    const std::vector<std::string>& warnings() const { return warnings_; }

    // Called after a model was loaded, so that open memory and view windows refresh.
    std::function<void()> modelchanged;

private:
    Machine m_;
    SettingsAccess& settings_;
    RunControl run_;
    std::string datadirectory_;
    ModelList list_;
    ModelDefinitions definitions_;
    std::vector<std::string> warnings_;
    std::string error_;
    int index_ = 0;
};

}  // namespace velmora
