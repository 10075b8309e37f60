#pragma once
// A TCP client on the loopback address, standing in for avr-gdb in tests of the stub.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace velmora::test {

class LoopbackClient {
public:
    explicit LoopbackClient(int port) : fd_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<uint16_t>(port));
        if (fd_ >= 0 && ::connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) close();
    }
    ~LoopbackClient() { close(); }
    LoopbackClient(const LoopbackClient&) = delete;
    LoopbackClient& operator=(const LoopbackClient&) = delete;

    bool connected() const { return fd_ >= 0; }
    void send(const std::string& bytes) const {
        if (fd_ >= 0) (void)::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    // What came within `waitms`, and whatever follows it closely.
    std::string receive(int waitms = 500) const {
        std::string bytes;
        char buffer[4096];
        for (pollfd ready{fd_, POLLIN, 0}; fd_ >= 0 && ::poll(&ready, 1, bytes.empty() ? waitms : 20) > 0;) {
            const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
            if (n <= 0) break;
            bytes.append(buffer, static_cast<size_t>(n));
        }
        return bytes;
    }
    void close() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }

private:
    int fd_;
};

// A loopback port nobody listens on right now (the system's pick for port 0).
inline int freeport() {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    const bool bound = fd >= 0 && ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                       ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) == 0;
    if (fd >= 0) ::close(fd);
    return bound ? ntohs(address.sin_port) : 0;
}

}  // namespace velmora::test
