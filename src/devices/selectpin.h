#pragma once
// The Select Pin dialog without its drawing: a list of the ports PORTA..PORTG and of the bits
// 0..7, opened with the exchange values selected. Every device window chooses its pins here.
// In port-only mode (caption "Select Port") the bits take no clicks and the bit stays 0.

#include <string>

namespace velmora {

class SelectPin {
public:
    // `port` 0 (not connected) opens with no port selected.
    SelectPin(int port, int bit, bool portonly);

    std::string caption() const { return portonly_ ? "Select Port" : "Select Pin"; }
    bool portonly() const { return portonly_; }
    // The selection, shown highlighted; after Cancel the port is 0.
    int port() const { return port_; }
    int bit() const { return bit_; }
    bool finished() const { return finished_; }

    // `portcode` 5..11; other values and bit clicks in port-only mode do nothing.
    void clickport(int portcode);
    void clickbit(int bit);
    // A double click selects and accepts at once.
    void doubleclickport(int portcode);
    void doubleclickbit(int bit);
    void select();  // Command1 "Select"
    void cancel();  // Command2 "Cancel": the port becomes 0

private:
    int port_;
    int bit_;
    bool portonly_;
    bool finished_ = false;
};

}  // namespace velmora
