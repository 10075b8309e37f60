#pragma once
// GDB's remote serial protocol on the wire: "$payload#checksum" packets, '+' and '-'
// acknowledgements, and the interrupt byte 0x03 that Ctrl-C sends while the target runs.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct RspEvent {
    enum class Kind : uint8_t { Packet, BadChecksum, Ack, Nak, Interrupt };
    Kind kind;
    std::string payload;  // a packet's text, '}' escapes already undone
    bool operator==(const RspEvent&) const = default;
};

// Splits the client's bytes into events, across any number of reads. Bytes outside a packet
// that mean nothing are dropped; a packet longer than the limit is dropped whole.
class RspReader {
public:
    static constexpr size_t kPacketLimit = 16384;
    void feed(const char* bytes, size_t count, std::vector<RspEvent>& events);

private:
    enum class State : uint8_t { Outside, Payload, Checksum1, Checksum2 };
    State state_ = State::Outside;
    std::string payload_;
    bool escaped_ = false, overlong_ = false;
    uint8_t sum_ = 0;
    int checksum_ = 0;
};

// "$payload#cs", with '$', '#', '}' and '*' escaped so the client reads them literally.
std::string rspframe(const std::string& payload);

// Hexadecimal text of bytes, two lower-case digits each, and back (nothing on a bad digit or an
// odd length).
std::string hexbytes(const uint8_t* bytes, size_t count);
std::optional<std::vector<uint8_t>> bytesofhex(const std::string& text);
// A hexadecimal number of at most eight digits.
std::optional<uint32_t> hexnumber(const std::string& text);

}  // namespace velmora
