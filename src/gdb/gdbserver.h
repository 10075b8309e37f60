#pragma once
// The TCP side of the GDB stub: listens on the loopback address only, one client at a time.

#include <string>

namespace velmora {

class GdbServer {
public:
    GdbServer() = default;
    GdbServer(const GdbServer&) = delete;
    GdbServer& operator=(const GdbServer&) = delete;
    ~GdbServer();

    // Listens on 127.0.0.1:port (0: any free port, see port()); false with the reason.
    bool listen(int port, std::string& error);
    int port() const { return port_; }
    // Waits for a client; false when listening failed meanwhile.
    bool accept();
    // Takes a client that is already waiting, without waiting for one.
    bool acceptwaiting();
    bool hasclient() const { return client_ >= 0; }
    // Waits for bytes from the client; empty once it has gone.
    std::string read();
    // Whatever the client sent within `waitms` milliseconds; empty when nothing came.
    std::string poll(int waitms = 0);
    void write(const std::string& bytes);
    void closeclient();

private:
    void nodelay();

    int listener_ = -1, client_ = -1, port_ = 0;
};

}  // namespace velmora
