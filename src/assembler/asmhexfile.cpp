#include "assembler/asmhexfile.h"

#include <span>

#include "core/numbers.h"
#include "image/hexwriter.h"

namespace velmora {

int asmbuildimage(AsmContext& ctx) {
    int last = -1;
    const int64_t size = static_cast<int64_t>(ctx.image.size());
    for (const AsmLine& line : ctx.lines) {
        const int64_t start = int64_t{line.location} * 2;
        for (size_t digit = 0; digit + 1 < line.opcode.size(); digit += 2) {
            const int64_t index = start + static_cast<int64_t>(digit / 2);
            if (index < 0 || index >= size) continue;
            ctx.image[static_cast<size_t>(index)] = static_cast<uint8_t>(hexfield(line.opcode.substr(digit, 2), 2));
            last = static_cast<int>(index);
        }
    }
    return last;
}

std::string asmhextext(const AsmContext& ctx, int last) {
    const size_t count = last < 0 ? 0 : static_cast<size_t>(last) + 1;
    return writeintelhex(std::span<const uint8_t>(ctx.image).first(count));
}

}  // namespace velmora
