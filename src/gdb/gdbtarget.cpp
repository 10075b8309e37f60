#include "gdb/gdbtarget.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "core/memory.h"
#include "gdb/rsp.h"

namespace velmora {

namespace {

constexpr size_t kLargestTransfer = 4096;
constexpr char kError[] = "E01";

// "ADDR,LENGTH" as hexadecimal numbers.
bool addressandlength(const std::string& text, uint32_t& address, uint32_t& length) {
    const size_t comma = text.find(',');
    if (comma == std::string::npos) return false;
    const auto a = hexnumber(text.substr(0, comma)), n = hexnumber(text.substr(comma + 1));
    if (!a || !n || *n > kLargestTransfer) return false;
    address = *a;
    length = *n;
    return true;
}

}  // namespace

std::optional<std::string> GdbTarget::answer(const std::string& packet) {
    if (packet.empty()) return "";
    switch (packet[0]) {
    case 'g': return registers();
    case 'G': return setregisters(packet.substr(1));
    case 'p': {
        const auto number = hexnumber(packet.substr(1));
        const std::optional<std::string> value = number ? registervalue(static_cast<int>(*number)) : std::nullopt;
        return value ? *value : kError;
    }
    case 'P': return setregister(packet.substr(1));
    case 'm': return readmemory(packet.substr(1));
    case 'M': return writememory(packet.substr(1), false);
    case 'X': return writememory(packet.substr(1), true);
    case 'Z': return breakpoint(packet.substr(1), true);
    case 'z': return breakpoint(packet.substr(1), false);
    case 'H': return "OK";  // one thread only
    case 'c': case 's': case 'k': case 'D': case '?': case 'v': return std::nullopt;
    default: break;
    }
    if (packet.starts_with("qSupported")) return "PacketSize=3fff";
    if (packet == "qAttached") return "1";
    if (packet == "qC") return "QC1";
    if (packet == "qfThreadInfo") return "m1";
    if (packet == "qsThreadInfo") return "l";
    return "";
}

std::string GdbTarget::registers() const {
    std::string text;
    for (int number = 0; number <= kGdbPc; ++number) text += *registervalue(number);
    return text;
}

std::optional<std::string> GdbTarget::registervalue(int number) const {
    if (number < 0 || number > kGdbPc) return std::nullopt;
    if (number < kGdbSp) return hexbytes(&m_.datamem[static_cast<size_t>(number == kGdbSreg ? kSregAddress : number)], 1);
    if (number == kGdbSp) return hexbytes(&m_.datamem[kSplAddress], 2);
    const uint32_t pc = static_cast<uint32_t>(m_.pc) * 2;
    const uint8_t bytes[4] = {static_cast<uint8_t>(pc), static_cast<uint8_t>(pc >> 8), static_cast<uint8_t>(pc >> 16),
                              static_cast<uint8_t>(pc >> 24)};
    return hexbytes(bytes, 4);
}

std::string GdbTarget::setregisters(const std::string& hex) {
    const auto bytes = bytesofhex(hex);
    // R0-R31, SREG, SP low and high, PC in four bytes.
    if (!bytes || bytes->size() < 39) return kError;
    for (int r = 0; r < 32; ++r) m_.datamem[static_cast<size_t>(r)] = (*bytes)[static_cast<size_t>(r)];
    m_.datamem[kSregAddress] = (*bytes)[32];
    m_.datamem[kSplAddress] = (*bytes)[33];
    m_.datamem[kSphAddress] = (*bytes)[34];
    const uint32_t pc = (*bytes)[35] | ((*bytes)[36] << 8) | ((*bytes)[37] << 16) | (static_cast<uint32_t>((*bytes)[38]) << 24);
    if (m_.flashwords > 0) m_.pc = static_cast<int32_t>((pc / 2) % static_cast<uint32_t>(m_.flashwords));
    return "OK";
}

std::string GdbTarget::setregister(const std::string& request) {
    const size_t equals = request.find('=');
    if (equals == std::string::npos) return kError;
    const auto number = hexnumber(request.substr(0, equals));
    const auto bytes = bytesofhex(request.substr(equals + 1));
    if (!number || !bytes || bytes->empty()) return kError;
    const std::vector<uint8_t>& b = *bytes;
    if (*number < 32) {
        m_.datamem[*number] = b[0];
    } else if (*number == kGdbSreg) {
        m_.datamem[kSregAddress] = b[0];
    } else if (*number == kGdbSp && b.size() >= 2) {
        m_.datamem[kSplAddress] = b[0];
        m_.datamem[kSphAddress] = b[1];
    } else if (*number == kGdbPc && b.size() >= 2) {
        uint32_t pc = 0;
        for (size_t i = 0; i < b.size() && i < 4; ++i) pc |= static_cast<uint32_t>(b[i]) << (8 * i);
        if (m_.flashwords > 0) m_.pc = static_cast<int32_t>((pc / 2) % static_cast<uint32_t>(m_.flashwords));
    } else {
        return kError;
    }
    return "OK";
}

uint8_t* GdbTarget::place(uint32_t address) const {
    if (address < kGdbDataSpace)
        return address < static_cast<uint32_t>(m_.flashsize) ? &m_.progmem[address] : nullptr;
    if (address < kGdbEeprom) {
        const uint32_t data = address - kGdbDataSpace;
        return data < m_.datamem.size() ? &m_.datamem[data] : nullptr;
    }
    const uint32_t cell = address - kGdbEeprom;
    return cell < m_.eeprommem.size() ? &m_.eeprommem[cell] : nullptr;
}

std::string GdbTarget::readmemory(const std::string& request) const {
    uint32_t address = 0, length = 0;
    if (!addressandlength(request, address, length)) return kError;
    std::string text;
    for (uint32_t i = 0; i < length; ++i) {
        const uint8_t* byte = place(address + i);
        if (!byte) return i == 0 ? kError : text;  // as far as memory reaches
        text += hexbytes(byte, 1);
    }
    return text;
}

std::string GdbTarget::writememory(const std::string& request, bool binary) {
    const size_t colon = request.find(':');
    uint32_t address = 0, length = 0;
    if (colon == std::string::npos || !addressandlength(request.substr(0, colon), address, length)) return kError;
    std::vector<uint8_t> bytes;
    if (binary) {
        bytes.assign(request.begin() + static_cast<std::ptrdiff_t>(colon) + 1, request.end());
    } else {
        auto decoded = bytesofhex(request.substr(colon + 1));
        if (!decoded) return kError;
        bytes = std::move(*decoded);
    }
    if (bytes.size() != length) return kError;
    for (uint32_t i = 0; i < length; ++i)
        if (!place(address + i)) return kError;
    for (uint32_t i = 0; i < length; ++i) *place(address + i) = bytes[i];
    // A program written into flash (gdb's load) counts as loaded up to where it reaches.
    if (address < kGdbDataSpace && length > 0)
        m_.programbytes = std::max(m_.programbytes, static_cast<int>(address + length));
    return "OK";
}

std::string GdbTarget::breakpoint(const std::string& request, bool set) {
    // "TYPE,ADDR,KIND": software (0) and hardware (1) breakpoints are the same here.
    if (request.size() >= 2 && request[0] >= '2' && request[0] <= '4' && request[1] == ',')
        return watchpoint(request[0], request.substr(2), set);
    if (request.size() < 2 || (request[0] != '0' && request[0] != '1') || request[1] != ',') return "";
    const std::string rest = request.substr(2);
    const auto address = hexnumber(rest.substr(0, rest.find(',')));
    if (!address || *address >= static_cast<uint32_t>(m_.flashsize) || *address % 2 != 0) return kError;
    if (set)
        breakpoints_.insert(*address);
    else
        breakpoints_.erase(*address);
    std::vector<int32_t> words;
    for (const uint32_t byte : breakpoints_) words.push_back(static_cast<int32_t>(byte / 2));
    setbreakpoints(m_, words, kBreakDebugger);
    return "OK";
}

// "ADDR,LENGTH" in the data space: every byte of the object is watched.
std::string GdbTarget::watchpoint(char type, const std::string& request, bool set) {
    uint32_t address = 0, length = 0;
    if (!addressandlength(request, address, length) || address < kGdbDataSpace || address >= kGdbEeprom ||
        length == 0)
        return kError;
    const int first = static_cast<int>(address - kGdbDataSpace);
    if (first < kRegisterFileSize || first + static_cast<int>(length) > m_.dataspacesize) return kError;
    for (int a = first; a < first + static_cast<int>(length); ++a) {
        std::set<char>& kinds = watches_[a];
        if (set)
            kinds.insert(type);
        else
            kinds.erase(type);
        const bool reads = kinds.count('3') || kinds.count('4'), writes = kinds.count('2') || kinds.count('4');
        setdatawatch(m_, a, reads, writes);
        if (kinds.empty()) watches_.erase(a);
    }
    return "OK";
}

void GdbTarget::release() {
    breakpoints_.clear();
    setbreakpoints(m_, {}, kBreakDebugger);
    for (const auto& watched : watches_) setdatawatch(m_, watched.first, false, false);
    watches_.clear();
    m_.watchhit = -1;
}

std::optional<std::string> GdbTarget::watchstop() {
    if (m_.watchhit < 0) return std::nullopt;
    const int address = m_.watchhit;
    m_.watchhit = -1;
    const auto found = watches_.find(address);
    const std::set<char> kinds = found == watches_.end() ? std::set<char>{} : found->second;
    // The kind gdb set that this access answers: a write watch for a write, else read or access.
    const char* name = m_.watchhitwrite && kinds.count('2') ? "watch" : kinds.count('3') && !m_.watchhitwrite ? "rwatch"
                                                                                                            : "awatch";
    char text[48];
    std::snprintf(text, sizeof text, "T05%s:%x;", name, static_cast<unsigned>(address) + kGdbDataSpace);
    return std::string(text);
}

}  // namespace velmora
