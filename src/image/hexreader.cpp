#include "image/hexreader.h"

#include <algorithm>
#include <istream>
#include <string_view>

#include "core/hextext.h"
#include "core/numbers.h"

namespace velmora {

namespace {

// The longest record is 521 characters (255 data bytes). Text beyond this limit is not
// kept, so a huge file without line breaks costs no more memory than a normal one.
constexpr size_t kLineLimit = 1 << 16;

constexpr int kEndOfFile = -1;

bool isblankchar(int c) { return c == ' ' || c == '\t'; }

// One line without its end (LF, CR LF or a lone CR) and without trailing blanks. `cut` tells
// that the line had more than kLineLimit characters before its trailing blanks. False at the
// end of the input.
bool readline(std::streambuf& in, std::string& line, bool& cut) {
    constexpr int kEof = std::char_traits<char>::eof();
    line.clear();
    cut = false;
    int c = in.sbumpc();
    if (c == kEof) return false;
    std::string blanks;  // blanks not yet known to stand inside the line
    bool blanksoverflow = false;
    for (; c != kEof && c != '\n'; c = in.sbumpc()) {
        if (c == '\r') {
            if (in.sgetc() == '\n') in.sbumpc();
            break;
        }
        if (cut) continue;
        if (isblankchar(c)) {
            if (line.size() + blanks.size() < kLineLimit)
                blanks += static_cast<char>(c);
            else
                blanksoverflow = true;
            continue;
        }
        if (blanksoverflow || line.size() + blanks.size() >= kLineLimit) {
            cut = true;
            continue;
        }
        line += blanks;
        line += static_cast<char>(c);
        blanks.clear();
    }
    return true;
}

int digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// The checksum adds its pairs the forgiving way: letters of either case count, and a pair
// counts up to its first character that is no digit. So a lower-case digit among the data
// passes this test and is caught as an invalid byte, while the checksum field itself must
// match the upper-case text exactly.
int pairsum(std::string_view pair) {
    int value = 0;
    for (char c : pair) {
        const int d = digit(c);
        if (d < 0) break;
        value = value * 16 + d;
    }
    return value;
}

bool checksumfits(std::string_view record) {
    int sum = 0;
    // Every pair behind the colon that ends before the last two characters.
    for (size_t at = 1; at + 2 <= record.size() - 2; at += 2) sum += pairsum(record.substr(at, 2));
    return record.substr(record.size() - 2) == hex2(static_cast<uint32_t>((256 - (sum & 255)) & 255));
}

struct Bases {
    int64_t linear = 0;
    int64_t segment = 0;
};

int storedata(std::string_view data, int64_t target, std::span<uint8_t> memory, int& highest) {
    for (size_t at = 0; at < data.size(); at += 2, ++target) {
        if (target > static_cast<int64_t>(memory.size()) - 1) return kHexOutOfRange;
        const int byte = hexfield(data.substr(at, 2), 2);
        if (byte < 0) return kHexDataByte;
        memory[static_cast<size_t>(target)] = static_cast<uint8_t>(byte);
        highest = std::max(highest, static_cast<int>(target + 1));
    }
    return kHexOk;
}

// One record line; kEndOfFile for an end record.
int readrecord(std::string_view record, bool cut, Bases& bases, std::span<uint8_t> memory, int& highest) {
    if (record.front() != ':') return kHexNoColon;
    if (record.size() < 11) return kHexTooShort;
    if (cut) return kHexLength;  // far longer than any record can be
    if (!checksumfits(record)) return kHexChecksum;
    const int count = hexfield(record.substr(1, 2), 2);
    const int address = hexfield(record.substr(3, 4), 4);
    const int type = hexfield(record.substr(7, 2), 2);
    const std::string_view data = record.substr(9, record.size() - 11);
    const int value = hexfield(data, 4);  // the payload of types 2 and 4
    switch (type) {
        case 0:
            if (data.empty()) return kHexOk;
            if (count < 0) return kHexCount;
            if (address < 0) return kHexAddress;
            if (data.size() != static_cast<size_t>(count) * 2) return kHexLength;
            return storedata(data, bases.linear * 65536 + bases.segment * 16 + address, memory, highest);
        case 1:
            return kEndOfFile;
        case 2:
            if (address != 0 || value < 0 || data.back() != '0') return kHexType02;
            bases.segment = value;
            return kHexOk;
        case 4:
            if (address != 0 || value < 0) return kHexType04;
            bases.linear = value;
            return kHexOk;
        case 5:
            return kHexOk;
        default:
            return kHexRecordType;
    }
}

}  // namespace

HexReadResult readintelhex(std::istream& in, std::span<uint8_t> memory, int& highest) {
    std::streambuf* buffer = in.rdbuf();
    if (buffer == nullptr) return {};
    Bases bases;
    std::string line;
    bool cut = false;
    for (int64_t number = 1; readline(*buffer, line, cut); ++number) {
        if (line.empty() || line.front() == ';') continue;
        const int result = readrecord(line, cut, bases, memory, highest);
        if (result == kEndOfFile) break;
        if (result != kHexOk) return {result, number};
    }
    return {};
}

std::string hexerrortail(int code) {
    switch (code) {
        case kHexNoColon: return ": The record does not begin with ':' simbol.";
        case kHexTooShort: return ": The record is too short.";
        case kHexChecksum: return ": Invalid 'checksum' field in the record.";
        case kHexRecordType: return ": Invalid 'record type' field in the record.";
        case kHexType04: return ": Invalid '04 type' record.";
        case kHexCount: return ": Invalid 'number of bytes' field in the record.";
        case kHexAddress: return ": Invalid 'address' field in the record.";
        case kHexOddCount: return ": Field 'number of bytes' in the record must contain an even value.";
        case kHexOddAddress: return ": Field 'address' in the record must contain an even value.";
        case kHexLength: return ": The record does not contain the specified number of bytes.";
        case kHexDataByte: return ": Invalid data byte in the record.";
        case kHexOutOfRange: return ": Address out of range.";
        case kHexType02: return ": Invalid '02 type' record.";
        default: return "";
    }
}

}  // namespace velmora
