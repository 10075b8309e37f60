#include "shell/windowregistry.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {
// The normal drawings take the lower numbers, the compact ones the rest of the range.
constexpr std::array<PackageLayout, 14> kLayouts = {{
    {8, false, 12},  {14, false, 14}, {18, false, 15}, {20, false, 18}, {28, false, 22},
    {40, false, 24}, {64, false, 25}, {80, false, 26}, {8, true, 27},   {14, true, 28},
    {18, true, 50},  {20, true, 51},  {28, true, 52},  {40, true, 53},
}};

int layoutwindow(int pins, bool compact) {
    for (const PackageLayout& layout : kLayouts)
        if (layout.pins == pins && layout.compact == compact) return layout.window;
    return 0;
}
}  // namespace

std::span<const PackageLayout> packagelayouts() { return kLayouts; }

int packagewindow(int pins, bool compactview) {
    if (compactview)
        if (const int window = layoutwindow(pins, true)) return window;
    return layoutwindow(pins, false);
}

bool ismicrocontrollerview(int window) {
    return std::ranges::any_of(kLayouts, [window](const PackageLayout& l) { return l.window == window; });
}

void WindowRegistry::setopen(int window, bool open) { open_[window] = open; }

bool WindowRegistry::isopen(int window) const {
    const auto it = open_.find(window);
    return it != open_.end() && it->second;
}

bool WindowRegistry::microcontrollerviewopen() const {
    return std::ranges::any_of(kLayouts, [this](const PackageLayout& l) { return isopen(l.window); });
}

std::vector<int> WindowRegistry::openwindows() const {
    std::vector<int> result;
    for (const auto& [window, open] : open_)
        if (open) result.push_back(window);
    return result;
}

void WindowRegistry::registerwindow(int window, WindowActions actions) { actions_[window] = std::move(actions); }

bool WindowRegistry::canopen(int window) const {
    const auto it = actions_.find(window);
    return it != actions_.end() && it->second.open;
}

void WindowRegistry::open(int window) {
    if (canopen(window)) actions_[window].open();
}

void WindowRegistry::unload(int window) {
    const auto it = actions_.find(window);
    if (it != actions_.end() && it->second.unload) it->second.unload();
    open_[window] = false;
}

void WindowRegistry::unloadall() {
    for (int window : openwindows())
        if (window != windows::kMain) unload(window);
}

}  // namespace velmora
