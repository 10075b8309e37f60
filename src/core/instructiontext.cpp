#include "core/instructiontext.h"

#include "core/hextext.h"
#include "core/machine.h"

namespace velmora {

namespace {
std::string ioname(const BitNameTable& names, int address, int row) {
    if (address >= 0 && address < static_cast<int>(names.size())) return names[address][row];
    return defaultbitnames(address)[row];
}

std::string pairname(int code) {
    static const char* const kPairs[] = {"R25:R24", "XH:XL", "YH:YL", "ZH:ZL"};
    return kPairs[code & 3];
}

std::string pointerform(Op id) {
    switch (id) {
    case Op::LdX: case Op::StX: return "X";
    case Op::LdXPlus: case Op::StXPlus: return "X+";
    case Op::LdMinusX: case Op::StMinusX: return "-X";
    case Op::LdY: case Op::StY: return "Y";
    case Op::LdYPlus: case Op::StYPlus: return "Y+";
    case Op::LdMinusY: case Op::StMinusY: return "-Y";
    case Op::LdZ: case Op::StZ: return "Z";
    case Op::LdZPlus: case Op::StZPlus: return "Z+";
    default: return "-Z";
    }
}
}  // namespace

std::string registername(int r) {
    static const char* const kPointerHalves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    if (r >= 26 && r <= 31) return kPointerHalves[r - 26];
    return "R" + std::to_string(r);
}

int branchoffset(uint16_t op) {
    const int k = (op >> 3) & 0x7F;
    return k > 63 ? k - 128 : k;
}

int relativeoffset(uint16_t op) {
    const int k = op & 0xFFF;
    return k > 2047 ? k - 4096 : k;
}

uint32_t absoluteaddress(uint16_t op, uint16_t op2) {
    const uint32_t high = (op & 1) | ((op >> 3) & 0x3E);
    return high * 65536 + op2;
}

std::string formatinstruction(uint16_t op, uint16_t op2, const BitNameTable& bitnames) {
    return formatinstruction(decode(op), op, op2, bitnames);
}

std::string formatinstruction(Op id, uint16_t op, uint16_t op2, const BitNameTable& bitnames) {
    const int d5 = (op >> 4) & 31;
    const int r5 = (op & 15) | ((op >> 5) & 16);
    const std::string rd = registername(d5), rr = registername(r5);
    const std::string m = std::string(mnemonic(id)) + " ";
    const std::string imm = "$" + hex2(((op >> 4) & 0xF0) | (op & 15));
    const std::string rd4 = registername(16 + ((op >> 4) & 15));
    const std::string rd3 = registername(16 + ((op >> 4) & 7)), rr3 = registername(16 + (op & 7));
    const std::string bit = std::to_string(op & 7);
    const int a6 = (((op >> 5) & 0x30) | (op & 15)) + 32;
    const int a5 = ((op >> 3) & 31) + 32;
    const int q = ((op >> 8) & 0x20) | ((op >> 7) & 0x18) | (op & 7);

    switch (id) {
    case Op::Unrecognized: return "UNRECOGNIZED";
    case Op::Adc: case Op::Add: case Op::And: case Op::Cp: case Op::Cpc: case Op::Cpse: case Op::Eor:
    case Op::Mov: case Op::Mul: case Op::Or: case Op::Sbc: case Op::Sub:
        return m + rd + "," + rr;
    case Op::Adiw: case Op::Sbiw:
        return m + pairname(op >> 4) + "," + std::to_string(((op >> 2) & 0x30) | (op & 15));
    case Op::Andi: case Op::Cpi: case Op::Ldi: case Op::Ori: case Op::Sbci: case Op::Subi:
        return m + rd4 + "," + imm;
    case Op::Asr: case Op::Clr: case Op::Com: case Op::Dec: case Op::Inc: case Op::Lsl: case Op::Lsr:
    case Op::Neg: case Op::Pop: case Op::Push: case Op::Rol: case Op::Ror: case Op::Swap: case Op::Tst:
        return m + rd;
    case Op::Bclr: case Op::Bset: return m + std::to_string((op >> 4) & 7);
    case Op::Bld: case Op::Bst: case Op::Sbrc: case Op::Sbrs: return m + rd + "," + bit;
    case Op::BranchClear: case Op::BranchSet:
        return std::string(branchmnemonic(id == Op::BranchSet, op & 7)) + " " + std::to_string(branchoffset(op));
    case Op::Rjmp: case Op::Rcall: return m + std::to_string(relativeoffset(op));
    case Op::Call: case Op::Jmp: {
        const uint32_t target = absoluteaddress(op, op2);
        return m + dollarhex(target, target > 0xFFFF ? 6 : 4);
    }
    case Op::Cbi: case Op::Sbi: case Op::Sbic: case Op::Sbis:
        return m + ioname(bitnames, a5, 8) + "," + ioname(bitnames, a5, op & 7);
    case Op::In: return m + rd + "," + ioname(bitnames, a6, 8);
    case Op::Out: return m + ioname(bitnames, a6, 8) + "," + rd;
    case Op::LdX: case Op::LdXPlus: case Op::LdMinusX: case Op::LdY: case Op::LdYPlus: case Op::LdMinusY:
    case Op::LdZ: case Op::LdZPlus: case Op::LdMinusZ:
        return m + rd + "," + pointerform(id);
    case Op::StX: case Op::StXPlus: case Op::StMinusX: case Op::StY: case Op::StYPlus: case Op::StMinusY:
    case Op::StZ: case Op::StZPlus: case Op::StMinusZ:
        return m + pointerform(id) + "," + rd;
    case Op::LddY: return m + rd + ",Y+" + std::to_string(q);
    case Op::LddZ: return m + rd + ",Z+" + std::to_string(q);
    case Op::StdY: return m + "Y+" + std::to_string(q) + "," + rd;
    case Op::StdZ: return m + "Z+" + std::to_string(q) + "," + rd;
    case Op::Lds: return m + rd + "," + dollarhex(op2, 4);
    case Op::Sts: return m + dollarhex(op2, 4) + "," + rd;
    case Op::LpmZ: case Op::ElpmZ: return m + rd + ",Z";
    case Op::LpmZPlus: case Op::ElpmZPlus: return m + rd + ",Z+";
    case Op::Movw:
        return m + "R" + std::to_string(((op >> 4) & 15) * 2 + 1) + ":R" + std::to_string(((op >> 4) & 15) * 2) +
               ",R" + std::to_string((op & 15) * 2 + 1) + ":R" + std::to_string((op & 15) * 2);
    case Op::Muls: return m + rd4 + "," + registername(16 + (op & 15));
    case Op::Mulsu: case Op::Fmul: case Op::Fmuls: case Op::Fmulsu: return m + rd3 + "," + rr3;
    default: return mnemonic(id);  // operand-less forms
    }
}

std::string instructiontext(const Machine& m) {
    switch (m.laststep) {
    case Machine::LastStep::None: return "";
    case Machine::LastStep::Interrupt: return "INTERRUPT!";
    case Machine::LastStep::Unrecognized: return "UNRECOGNIZED";
    case Machine::LastStep::Instruction: break;
    }
    // Program memory does not change while a program runs, so the words are still those executed.
    return formatinstruction(progword(m, m.lastpc), progword(m, m.lastpc + 1), m.bitnames);
}

std::string nextinstructiontext(const Machine& m) {
    if (m.flashwords <= 0 || m.pc < 0 || m.pc >= m.flashwords) return "";
    return formatinstruction(progword(m, m.pc), progword(m, m.pc + 1), m.bitnames);
}

}  // namespace velmora
