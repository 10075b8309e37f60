#pragma once
// What a device window shows: an RGB32 pixel buffer (0xffRRGGBB) that the model paints and
// the Qt view only scales onto the screen.

#include <cstdint>
#include <vector>

namespace velmora {

inline constexpr uint32_t rgb(int r, int g, int b) {
    return 0xFF000000u | (static_cast<uint32_t>(r & 255) << 16) | (static_cast<uint32_t>(g & 255) << 8) |
           static_cast<uint32_t>(b & 255);
}

struct Canvas {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;  // row after row

    void resize(int w, int h, uint32_t colour) {
        width = w;
        height = h;
        pixels.assign(static_cast<size_t>(w) * static_cast<size_t>(h), colour);
    }
    // Clipped to the canvas.
    void fillrect(int x, int y, int w, int h, uint32_t colour) {
        for (int row = y < 0 ? 0 : y; row < y + h && row < height; ++row)
            for (int col = x < 0 ? 0 : x; col < x + w && col < width; ++col)
                pixels[static_cast<size_t>(row) * width + col] = colour;
    }
    uint32_t at(int x, int y) const {
        if (x < 0 || y < 0 || x >= width || y >= height) return 0;
        return pixels[static_cast<size_t>(y) * width + x];
    }
};

}  // namespace velmora
