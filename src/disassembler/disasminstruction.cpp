#include "disassembler/disasminstruction.h"

namespace velmora {

std::string Disassembler::disasminstruction(uint16_t word, uint16_t nextword) {
    const Op id = decode(word);
    secondword_ = id == Op::Call || id == Op::Jmp || id == Op::Lds || id == Op::Sts;
    return formatinstruction(id, word, nextword, *bitnames_);
}

}  // namespace velmora
