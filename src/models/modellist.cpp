// modellist: the models offered, one per "at*.cfg" file, in display order.

#include <filesystem>
#include <fstream>

#include "core/numbers.h"
#include "models/modelfile.h"
#include "models/modeltext.h"

namespace velmora {

namespace {

namespace fs = std::filesystem;
using namespace models;

bool ismodelfile(const std::string& filename) {
    const std::string lower = lowercase(filename);
    return lower.size() > 4 && lower.starts_with("at") && lower.ends_with(".cfg");
}

}  // namespace

std::string modelnameoffile(const std::string& filename) {
    std::string name = lowercase(filename.substr(0, filename.size() - 4));
    name.replace(0, 2, "AT");
    if (name.starts_with("AT90s")) name[4] = 'S';
    if (name.back() == 'p') name.back() = 'P';
    return name;
}

namespace {

std::string modeldescription(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string lines[7];
    for (std::string& line : lines) {
        if (!std::getline(in, line)) break;
        if (!line.empty() && line.back() == '\r') line.pop_back();
    }
    return uppercase(lines[2]) + ", " + uppercase(lines[3]) + ", " + uppercase(lines[5]) + ", " + uppercase(lines[6]);
}

}  // namespace

void sortmodels(std::vector<ModelEntry>& models) {
    // Two bubble sorts, as the order must stay the same for equal keys: by the bytes of the
    // name, then within a family of equal first six characters by the number that follows,
    // so that ATmega8 comes before ATmega16.
    auto bubble = [&models](auto outoforder) {
        for (size_t end = models.size(); end > 1; --end)
            for (size_t i = 0; i + 1 < end; ++i)
                if (outoforder(models[i].name, models[i + 1].name)) std::swap(models[i], models[i + 1]);
    };
    bubble([](const std::string& a, const std::string& b) { return a > b; });
    auto numberpart = [](const std::string& name) {
        return lenientdecimal(name.size() > 6 ? std::string_view(name).substr(6) : std::string_view());
    };
    bubble([&](const std::string& a, const std::string& b) {
        return a.substr(0, 6) == b.substr(0, 6) && numberpart(a) > numberpart(b);
    });
}

ModelList modellist(const std::string& directory) {
    ModelList list;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, error)) {
        const std::string filename = entry.path().filename().string();
        if (!ismodelfile(filename) || !entry.is_regular_file(error)) continue;
        list.models.push_back({modelnameoffile(filename), filename, modeldescription(entry.path().string())});
    }
    if (list.models.empty()) {
        list.error = "No CFG files found.\nThe program will now end.";
        return list;
    }
    sortmodels(list.models);
    list.defaultindex = static_cast<int>(list.models.size()) - 1;
    for (size_t i = 0; i < list.models.size(); ++i)
        if (list.models[i].name == "ATmega32") list.defaultindex = static_cast<int>(i);
    return list;
}

}  // namespace velmora
