#include "cli/session.h"

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include "core/peripherals.h"
#include "core/textcase.h"
#include "core/testmachine.h"
#include "image/hexload.h"
#include "models/datadirectory.h"
#include "models/modelfile.h"

namespace velmora {

namespace {
bool hasextension(const std::string& path, const std::string& extension) {
    if (path.size() < extension.size()) return false;
    return sameignoringcase(path.substr(path.size() - extension.size()), extension);
}
}  // namespace

void StreamMessenger::show(const std::string& text, MessageKind) {
    if (flushfirst) flushfirst->flush();
    out_ << text << "\n";
}

double SteadyClock::now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

CliSession::CliSession(std::ostream& err) : err_(err), messenger_(err) {
    run_ = std::make_unique<RunControl>(machine_, messenger_, clock_, settings_);
}

std::string modeldirectory() { return datadirectory(VELMORA_SOURCE_DATA_DIR) + "/models"; }

bool CliSession::selectmodel(const std::optional<std::string>& name) {
    const ModelList list = modellist(modeldirectory());
    if (!list.error.empty()) {
        err_ << list.error << "\n";
        return false;
    }
    int index = list.defaultindex;
    if (name) {
        index = -1;
        for (size_t i = 0; i < list.models.size(); ++i)
            if (sameignoringcase(list.models[i].name, *name)) index = static_cast<int>(i);
        if (index < 0) {
            err_ << "velmora-cli: no model named '" << *name << "'; 'velmora-cli models' lists them\n";
            return false;
        }
    }
    const ModelLoadResult result =
        modelload(modeldirectory(), list.models[index].name, ModelOptions{}, machine_, definitions_);
    for (const std::string& warning : result.warnings) err_ << warning << "\n";
    if (!result.ok) {
        err_ << result.message << "\n";
        return false;
    }
    machine_.modelname = list.models[index].name;
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

std::optional<std::vector<uint16_t>> parsewordfile(const std::string& text, std::string& error) {
    std::vector<uint16_t> words;
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        line = line.substr(0, line.find(';'));
        std::istringstream tokens(line);
        std::string token;
        while (tokens >> token) {
            char* end = nullptr;
            const unsigned long value = std::strtoul(token.c_str(), &end, 16);
            if (*end != '\0' || value > 0xFFFF || token.size() > 4) {
                error = "line " + std::to_string(number) + ": '" + token + "' is not a 16-bit hexadecimal word";
                return std::nullopt;
            }
            words.push_back(static_cast<uint16_t>(value));
        }
    }
    return words;
}

bool CliSession::loadprogram(const std::string& path) {
    if (hasextension(path, ".hex")) {
        // As Load Program does: clear, load, and on failure leave memory clean.
        machine_.programbytes = 0;
        fillunprogrammed(machine_);
        if (!hexload(machine_, path, messenger_)) {
            machine_.programbytes = 0;
            fillunprogrammed(machine_);
            return false;
        }
        return true;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        err_ << "velmora-cli: cannot open '" << path << "'\n";
        return false;
    }
    std::stringstream content;
    content << file.rdbuf();
    std::string error;
    const auto words = parsewordfile(content.str(), error);
    if (!words) {
        err_ << "velmora-cli: " << path << ": " << error << "\n";
        return false;
    }
    if (words->size() > static_cast<size_t>(machine_.flashwords)) {
        err_ << "velmora-cli: " << path << ": the program does not fit into program memory\n";
        return false;
    }
    loadwords(machine_, *words);
    machine_.programbytes = static_cast<int>(words->size() * 2);
    return true;
}

}  // namespace velmora
