// Runs a tight loop of mixed instructions through the full step for about 1e9
// cycles (or the count given as the first argument) and prints the simulated rate.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/runcontrol.h"
#include "core/testmachine.h"

namespace {
struct NullMessenger : velmora::Messenger {
    void show(const std::string& text, velmora::MessageKind) override { std::fprintf(stderr, "%s\n", text.c_str()); }
};
struct SteadyClock : velmora::Clock {
    double now() override {
        using namespace std::chrono;
        return duration<double>(steady_clock::now().time_since_epoch()).count();
    }
    void nap() override {}

protected:
    void yieldevents() override {}
};
struct NoSettings : velmora::SettingsAccess {
    std::string getsetting(const std::string&, const std::string& d) override { return d; }
    void putsetting(const std::string&, const std::string&) override {}
    int32_t getsettingdword(const std::string& name, int32_t d) override { return name == "Simulation Rate" ? 6 : d; }
    void putsettingdword(const std::string&, int32_t) override {}
};
}  // namespace

int main(int argc, char** argv) {
    const uint64_t target = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000000ULL;
    velmora::Machine m;
    velmora::configurebaremachine(m);
    // ldi r16,0 ; ldi r17,0 ; ldi r30,0x60; ldi r31,0
    // loop: add r16,r17 ; eor r18,r16 ; inc r17 ; st Z,r16 ; ld r19,Z ; lsr r18 ;
    //       push r16 ; pop r20 ; sbiw r24,1 ; brne loop ; rcall sub ; rjmp loop
    // sub:  ret
    velmora::loadwords(m, {0xE000, 0xE010, 0xE6E0, 0xE0F0,
                           0x0F01, 0x2720, 0x9513, 0x8300, 0x8130, 0x9526,
                           0x930F, 0x914F, 0x9701, 0xF7B1, 0xD001, 0xCFF4,
                           0x9508});
    NullMessenger messenger;
    SteadyClock clock;
    NoSettings settings;
    velmora::RunControl run(m, messenger, clock, settings);
    m.simulationrunning = true;
    velmora::clean(m);
    m.datamem[velmora::kSplAddress] = 0x5F;
    m.datamem[velmora::kSphAddress] = 0x08;
    const auto start = std::chrono::steady_clock::now();
    while (m.totalcycles < target && !m.stoprequest) run.simulatestep();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("cycles %llu, instructions %llu, %.3f s, %.1f simulated MHz\n",
                static_cast<unsigned long long>(m.totalcycles), static_cast<unsigned long long>(m.totalinstructions),
                seconds, m.totalcycles / seconds / 1e6);
    return m.stoprequest ? 1 : 0;
}
