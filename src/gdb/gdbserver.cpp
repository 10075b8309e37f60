#include "gdb/gdbserver.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace velmora {

GdbServer::~GdbServer() {
    closeclient();
    if (listener_ >= 0) ::close(listener_);
}

bool GdbServer::listen(int port, std::string& error) {
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    if (listener_ < 0) {
        error = std::strerror(errno);
        return false;
    }
    const int yes = 1;
    ::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener_, 1) != 0) {
        error = "port " + std::to_string(port) + ": " + std::strerror(errno);
        ::close(listener_);
        listener_ = -1;
        return false;
    }
    socklen_t length = sizeof address;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    return true;
}

bool GdbServer::accept() {
    closeclient();
    do {
        client_ = ::accept(listener_, nullptr, nullptr);
    } while (client_ < 0 && errno == EINTR);
    if (client_ < 0) return false;
    nodelay();
    return true;
}

bool GdbServer::acceptwaiting() {
    if (listener_ < 0) return false;
    pollfd ready{listener_, POLLIN, 0};
    if (::poll(&ready, 1, 0) <= 0 || !(ready.revents & POLLIN)) return false;
    return accept();
}

void GdbServer::nodelay() {
    // Replies are small and each waits for the next request: send them at once.
    const int yes = 1;
    ::setsockopt(client_, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

std::string GdbServer::read() {
    if (client_ < 0) return {};
    char buffer[4096];
    ssize_t n;
    do {
        n = ::recv(client_, buffer, sizeof buffer, 0);
    } while (n < 0 && errno == EINTR);
    if (n <= 0) {
        closeclient();
        return {};
    }
    return std::string(buffer, static_cast<size_t>(n));
}

std::string GdbServer::poll(int waitms) {
    if (client_ < 0) return {};
    pollfd ready{client_, POLLIN, 0};
    if (::poll(&ready, 1, waitms) <= 0 || !(ready.revents & (POLLIN | POLLHUP | POLLERR))) return {};
    return read();
}

void GdbServer::write(const std::string& bytes) {
    size_t done = 0;
    while (client_ >= 0 && done < bytes.size()) {
        const ssize_t n = ::send(client_, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            closeclient();
            return;
        }
        done += static_cast<size_t>(n);
    }
}

void GdbServer::closeclient() {
    if (client_ >= 0) ::close(client_);
    client_ = -1;
}

}  // namespace velmora
