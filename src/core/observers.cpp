#include "core/observers.h"

#include <algorithm>

#include "core/machine.h"

namespace velmora {

void attendobservers(Machine& m) {
    uint64_t next = UINT64_MAX;
    // By index: an observer may add or remove observers in its turn.
    for (size_t i = 0; i < m.observers.size(); ++i) next = std::min(next, m.observers[i]->attend(m));
    // A cycle already reached was somebody's turn that has been had; one still ahead is kept.
    m.attentioncycle = m.attentioncycle <= m.totalcycles ? next : std::min(m.attentioncycle, next);
}

void addobserver(Machine& m, PinObserver* observer) {
    if (std::ranges::find(m.observers, observer) == m.observers.end()) m.observers.push_back(observer);
    m.attention = true;
}

void removeobserver(Machine& m, PinObserver* observer) { std::erase(m.observers, observer); }

}  // namespace velmora
