#include "gdb/rsp.h"

namespace velmora {

namespace {

int hexvalue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

constexpr char kDigits[] = "0123456789abcdef";

}  // namespace

void RspReader::feed(const char* bytes, size_t count, std::vector<RspEvent>& events) {
    for (size_t i = 0; i < count; ++i) {
        const char c = bytes[i];
        switch (state_) {
        case State::Outside:
            if (c == '$') {
                state_ = State::Payload;
                payload_.clear();
                sum_ = 0;
                escaped_ = overlong_ = false;
            } else if (c == '+') {
                events.push_back({RspEvent::Kind::Ack, {}});
            } else if (c == '-') {
                events.push_back({RspEvent::Kind::Nak, {}});
            } else if (c == '\x03') {
                events.push_back({RspEvent::Kind::Interrupt, {}});
            }
            break;
        case State::Payload:
            if (c == '#' && !escaped_) {
                state_ = State::Checksum1;
                break;
            }
            sum_ = static_cast<uint8_t>(sum_ + static_cast<uint8_t>(c));
            if (escaped_) {
                escaped_ = false;
                if (!overlong_) payload_ += static_cast<char>(c ^ 0x20);
            } else if (c == '}') {
                escaped_ = true;
            } else if (!overlong_) {
                payload_ += c;
            }
            if (payload_.size() > kPacketLimit) {
                overlong_ = true;
                payload_.clear();
            }
            break;
        case State::Checksum1:
            checksum_ = hexvalue(c) * 16;
            state_ = hexvalue(c) < 0 ? State::Outside : State::Checksum2;
            if (state_ == State::Outside) events.push_back({RspEvent::Kind::BadChecksum, {}});
            break;
        case State::Checksum2: {
            state_ = State::Outside;
            const int low = hexvalue(c);
            if (overlong_) break;
            if (low < 0 || checksum_ + low != sum_)
                events.push_back({RspEvent::Kind::BadChecksum, {}});
            else
                events.push_back({RspEvent::Kind::Packet, payload_});
            break;
        }
        }
    }
}

std::string rspframe(const std::string& payload) {
    std::string text = "$";
    uint8_t sum = 0;
    for (const char c : payload) {
        if (c == '$' || c == '#' || c == '}' || c == '*') {
            text += '}';
            text += static_cast<char>(c ^ 0x20);
            sum = static_cast<uint8_t>(sum + '}' + static_cast<uint8_t>(c ^ 0x20));
        } else {
            text += c;
            sum = static_cast<uint8_t>(sum + static_cast<uint8_t>(c));
        }
    }
    text += '#';
    text += kDigits[sum >> 4];
    text += kDigits[sum & 15];
    return text;
}

std::string hexbytes(const uint8_t* bytes, size_t count) {
    std::string text;
    text.reserve(count * 2);
    for (size_t i = 0; i < count; ++i) {
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 15];
    }
    return text;
}

std::optional<std::vector<uint8_t>> bytesofhex(const std::string& text) {
    if (text.size() % 2 != 0) return std::nullopt;
    std::vector<uint8_t> bytes;
    bytes.reserve(text.size() / 2);
    for (size_t i = 0; i < text.size(); i += 2) {
        const int high = hexvalue(text[i]), low = hexvalue(text[i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

std::optional<uint32_t> hexnumber(const std::string& text) {
    if (text.empty() || text.size() > 8) return std::nullopt;
    uint32_t value = 0;
    for (const char c : text) {
        const int digit = hexvalue(c);
        if (digit < 0) return std::nullopt;
        value = value * 16 + static_cast<uint32_t>(digit);
    }
    return value;
}

}  // namespace velmora
