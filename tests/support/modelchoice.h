#pragma once
// Selects a model of the list by its display name, as a person picks it in Select Model.

#include <string>

#include "shell/simulation.h"

namespace velmora::test {

// False when the list has no such model or its file does not load.
inline bool selectmodelnamed(Simulation& sim, const std::string& name) {
    if (sim.models().models.empty()) sim.buildmodellist();
    const auto& list = sim.models().models;
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i].name == name) return sim.modelselect(static_cast<int>(i) + 1);
    return false;
}

}  // namespace velmora::test
