#include "image/hexwriter.h"

#include <algorithm>
#include <array>

#include "core/hextext.h"

namespace velmora {

namespace {

constexpr size_t kRecordBytes = 16;
constexpr int kDataRecord = 0, kEndRecord = 1, kLinearAddressRecord = 4;

}  // namespace

std::string hexrecord(int type, uint16_t address, std::span<const uint8_t> data) {
    const uint32_t count = static_cast<uint32_t>(data.size() & 0xFF);
    uint32_t sum = count + (address >> 8) + (address & 0xFF) + static_cast<uint32_t>(type);
    std::string record = ":" + hex2(count) + hex4(address) + hex2(static_cast<uint32_t>(type));
    for (uint8_t byte : data.first(count)) {
        record += hex2(byte);
        sum += byte;
    }
    record += hex2((256 - (sum & 0xFF)) & 0xFF);
    record += "\r\n";
    return record;
}

std::string writeintelhex(std::span<const uint8_t> image) {
    std::string text;
    text.reserve(image.size() / kRecordBytes * 45 + 64);
    for (size_t at = 0; at < image.size(); at += kRecordBytes) {
        if (at % 65536 == 0) {
            const uint32_t upper = static_cast<uint32_t>(at >> 16) & 0xFFFF;
            const std::array<uint8_t, 2> base = {static_cast<uint8_t>(upper >> 8), static_cast<uint8_t>(upper & 0xFF)};
            text += hexrecord(kLinearAddressRecord, 0, base);
        }
        const size_t count = std::min(kRecordBytes, image.size() - at);
        text += hexrecord(kDataRecord, static_cast<uint16_t>(at & 0xFFFF), image.subspan(at, count));
    }
    text += hexrecord(kEndRecord, 0, {});
    return text;
}

}  // namespace velmora
