#include "shell/pausedediting.h"

#include <cctype>

#include "core/numbers.h"
#include "core/textcase.h"
#include "shell/mainwindowfields.h"

namespace velmora {

namespace {
// A data address the table row stands for, or -1 for a hardware stack level or a bad row.
int rowaddress(const Machine& m, int tableindex) {
    if (tableindex < 0 || tableindex >= static_cast<int>(m.namedregisters.size())) return -1;
    const int address = m.namedregisters[tableindex].address;
    return address >= 0 && address < m.dataspacesize ? address : -1;
}
}  // namespace

std::string registerprompt(const std::string& rowtext) {
    return "Enter new value [00-FF] for special function register\n" + rowtext + ".";
}

std::string sramprompt(const std::string& celltext) {
    return "Enter new value [00-FF] for general purpose register " + celltext + ".";
}

std::string pcprompt(const Machine& m) {
    return "Enter new value [000000-" + highestpctext(m) + "] for PC register.";
}

std::optional<uint8_t> bytefromanswer(const std::string& answer) {
    std::string text = uppercase(answer);
    if (text.size() == 1) text.insert(0, "0");
    const int value = hexfield(text, 2);
    if (value < 0) return std::nullopt;
    return static_cast<uint8_t>(value);
}

std::optional<int32_t> pcfromanswer(const std::string& answer, const Machine& m) {
    std::string text = uppercase(answer);
    if (text.empty() || text.size() > 6) return std::nullopt;
    text.insert(0, 6 - text.size(), '0');
    const int high = hexfield(text.substr(0, 2), 2), low = hexfield(text.substr(2), 4);
    if (high < 0 || low < 0) return std::nullopt;
    const int32_t value = high * 65536 + low;
    if (value > m.flashwords - 1) return std::nullopt;
    return value;
}

bool PausedEditing::editable() const {
    return run_.machine().simulationrunning && run_.simulationrate() == kRateStep;
}

bool PausedEditing::editregister(int tableindex) {
    Machine& m = run_.machine();
    const int address = rowaddress(m, tableindex);
    if (!editable() || address < 0) return false;
    const auto answer = input_.inputbox(registerprompt(m.namedregisters[tableindex].text), "");
    if (!answer) return false;
    const auto value = bytefromanswer(*answer);
    if (!value) return false;
    m.datamem[address] = *value & m.datamask[address];
    return true;
}

bool PausedEditing::flipbit(int tableindex, int bit) {
    Machine& m = run_.machine();
    const int address = rowaddress(m, tableindex);
    if (!editable() || address < 0 || bit < 0 || bit > 7) return false;
    // A bit the register does not have stays as it is.
    m.datamem[address] ^= static_cast<uint8_t>((1u << bit) & m.datamask[address]);
    return true;
}

bool PausedEditing::editsram(int address) {
    Machine& m = run_.machine();
    if (!editable() || address < firstsramaddress(m) || address >= m.dataspacesize) return false;
    const auto answer = input_.inputbox(sramprompt(sramcelltext(address)), "");
    if (!answer) return false;
    const auto value = bytefromanswer(*answer);
    if (!value) return false;
    m.datamem[address] = *value;
    return true;
}

bool PausedEditing::editpc() {
    Machine& m = run_.machine();
    if (!editable()) return false;
    const auto answer = input_.inputbox(pcprompt(m), pctext(m));
    if (!answer) return false;
    const auto value = pcfromanswer(*answer, m);
    if (!value) return false;
    m.pc = *value;
    return true;
}

bool PausedEditing::resetstatistics() {
    if (!editable()) return false;
    run_.menuresetstatistics();
    return true;
}

}  // namespace velmora
