// The shipped model files, loaded through the product's loader, against facts read from
// avr-libc's io headers: register addresses, bit numbers, vector numbers and memory sizes.
// The facts are data/avrlibc_extract.txt, made by tools/modelgen/extract.py, so this runs
// without avr-libc installed.
//
// Register roles bound from a model's ".EQU" definitions (cases in data/tables.txt).

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "models/modelfile.h"
#include "models/roles.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

const std::string kModelsDir = std::string(VELMORA_SOURCE_DATA_DIR) + "/models";
const std::string kExtract = std::string(VELMORA_TEST_DATA_DIR) + "/avrlibc_extract.txt";

struct DeviceFacts {
    std::map<std::string, int> sizes;      // flashend, ramstart, ramend, e2end, vectorbytes
    std::map<std::string, int> registers;  // name -> data address
    std::map<std::string, int> bits;       // bit name -> bit number
    std::map<std::string, int> vectors;    // avr-libc vector name -> vector number
    int size(const std::string& key) const { return sizes.contains(key) ? sizes.at(key) : 0; }
    int sramsize() const { return std::max(0, size("ramend") - size("ramstart") + 1); }
};

// Lines "device NAME" .. "end", each fact a line "KIND A B".
std::map<std::string, DeviceFacts> readextract() {
    std::map<std::string, DeviceFacts> devices;
    std::ifstream in(kExtract);
    DeviceFacts* current = nullptr;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string key, a, b;
        words >> key >> a >> b;
        if (key == "device")
            current = &devices[a];
        else if (key == "end")
            current = nullptr;
        else if (current == nullptr || key.empty() || key[0] == '#' || key == "header")
            continue;
        else if (key == "register")
            current->registers[a] = std::stoi(b, nullptr, 16);
        else if (key == "bit")
            current->bits[a] = std::stoi(b);
        else if (key == "vector")
            current->vectors[b] = std::stoi(a);
        else
            current->sizes[key] = std::stoi(a, nullptr, 0);
    }
    return devices;
}

const std::map<std::string, DeviceFacts>& extract() {
    static const std::map<std::string, DeviceFacts> devices = readextract();
    return devices;
}

std::vector<std::string> devicenames() {
    std::vector<std::string> names;
    for (const auto& [name, facts] : extract()) names.push_back(name);
    return names;
}

bool isportregister(const std::string& name) {
    return name.size() >= 4 && (((name.starts_with("PORT") && name.size() == 5)) ||
                                (name.starts_with("DDR") && name.size() == 4) ||
                                (name.starts_with("PIN") && name.size() == 4));
}

int bitindex(uint8_t mask) {
    for (int bit = 0; bit < 8; ++bit)
        if (mask == (1 << bit)) return bit;
    return -1;
}

// .equ NAME = 0xNN lines of the definition text; an I/O address there is a data address less 32.
std::map<std::string, int> definedaddresses(const ModelDefinitions& definitions) {
    std::map<std::string, int> out;
    for (const std::string& line : definitions.definitiontext) {
        std::istringstream words(line);
        std::string equ, name, equals, value;
        words >> equ >> name >> equals >> value;
        if (equ != ".equ" || equals != "=" || !value.starts_with("0x")) continue;
        const int address = std::stoi(value, nullptr, 16);
        out[name] = address <= 0x3F ? address + 32 : address;
    }
    return out;
}

// The two interrupts that fire on a clear bit carry the names the core knows them by.
std::vector<std::string> avrlibcnamesof(const std::string& interrupt) {
    if (interrupt == "ERDY") return {"EE_RDY", "EE_READY", "EEPROM_READY"};
    if (interrupt == "SPMR") return {"SPM_RDY", "SPM_READY"};
    return {interrupt};
}

TEST(ShippedModels, ListIsInDocumentedOrderWithAvrLibcSizesAndATmega32AsDefault) {
    const ModelList list = modellist(kModelsDir);
    ASSERT_TRUE(list.error.empty()) << list.error;
    std::string names;
    for (const ModelEntry& e : list.models) names += (names.empty() ? "" : " ") + e.name;
    EXPECT_EQ(names, tablerows("tables.txt", "Shipped model order").at(0)[0]);
    ASSERT_GE(list.defaultindex, 0);
    EXPECT_EQ(list.models[list.defaultindex].name, "ATmega32");
    // Every listed model has avr-libc facts, and its description gives their sizes.
    ASSERT_EQ(list.models.size(), extract().size());
    for (const ModelEntry& e : list.models) {
        const auto found = extract().find(e.name);
        ASSERT_NE(found, extract().end()) << e.name << " has no avr-libc facts";
        const DeviceFacts& f = found->second;
        const std::string sizes = ", FLASH: " + std::to_string(f.size("flashend") + 1) +
                                  ", SRAM: " + std::to_string(f.sramsize()) +
                                  ", EEPROM: " + std::to_string(f.size("e2end") + 1);
        EXPECT_TRUE(e.description.starts_with("PINS: ")) << e.name << ": " << e.description;
        EXPECT_TRUE(e.description.ends_with(sizes)) << e.name << ": " << e.description;
    }
}

class ShippedModel : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        facts = &extract().at(GetParam());
        result = modelload(kModelsDir, GetParam(), ModelOptions{}, m, definitions);
        ASSERT_TRUE(result.ok) << result.message;
        EXPECT_TRUE(result.message.empty()) << result.message;
        EXPECT_TRUE(result.warnings.empty()) << result.warnings.front();
    }

    // The bit name a register gives bit `bit`, "" when it is only the digit.
    std::string bitname(int address, int bit) const {
        const std::string& name = m.bitnames[address][bit];
        return name == std::to_string(bit) ? "" : name;
    }

    const DeviceFacts* facts = nullptr;
    Machine m;
    ModelDefinitions definitions;
    ModelLoadResult result;
};

TEST_P(ShippedModel, SizesAreAvrLibcSizes) {
    EXPECT_EQ(m.flashsize, facts->size("flashend") + 1);
    EXPECT_EQ(m.sramsize, facts->sramsize());
    EXPECT_EQ(m.eepromsize, facts->size("e2end") + 1);
    if (m.sramsize > 0) {
        // Extended I/O fills the gap between the 64 I/O registers and RAMSTART.
        EXPECT_EQ(m.extendedio, facts->size("ramstart") - 0x60);
        EXPECT_EQ(m.dataspacesize - 1, facts->size("ramend"));
    }
}

TEST_P(ShippedModel, RegistersSitAtAvrLibcAddresses) {
    std::set<int> named;
    for (const NamedRegister& r : m.namedregisters) {
        if (r.address >= kHwStackPseudoAddress) continue;
        named.insert(r.address);
        const auto found = facts->registers.find(r.name);
        ASSERT_NE(found, facts->registers.end()) << r.name << " is no avr-libc register";
        EXPECT_EQ(r.address, found->second) << r.name;
    }
    // The data space map holds addresses below $100; a register above keeps only its .equ.
    for (const auto& [name, address] : facts->registers) {
        if (address <= 0xFF) { EXPECT_TRUE(named.contains(address)) << name << " at $" << std::hex << address; }
    }
}

TEST_P(ShippedModel, DefinitionsGiveEveryAvrLibcRegisterItsAddress) {
    const std::map<std::string, int> defined = definedaddresses(definitions);
    for (const auto& [name, address] : facts->registers) {
        const auto found = defined.find(name);
        ASSERT_NE(found, defined.end()) << name << " is not defined";
        EXPECT_EQ(found->second, address) << name;
    }
}

TEST_P(ShippedModel, BitNamesAreAvrLibcBitNumbers) {
    int namedbits = 0;
    for (const NamedRegister& r : m.namedregisters) {
        if (r.address >= kHwStackPseudoAddress) continue;
        for (int bit = 0; bit < 8; ++bit) {
            const std::string name = bitname(r.address, bit);
            if (name.empty()) continue;
            EXPECT_FALSE(isportregister(r.name)) << r.name << " bit " << bit << " is named " << name;
            const auto found = facts->bits.find(name);
            ASSERT_NE(found, facts->bits.end()) << r.name << " bit " << bit << ": " << name << " is no avr-libc bit";
            EXPECT_EQ(found->second, bit) << r.name << ": " << name;
            ++namedbits;
        }
    }
    // The status register and the comparator's control register exist on every part.
    for (int address : {kSregAddress, m.roles.acsr})
        for (int bit : {0, 1, 3}) EXPECT_FALSE(bitname(address, bit).empty()) << "$" << std::hex << address;
    EXPECT_GE(namedbits, 30);
}

TEST_P(ShippedModel, InterruptsAreTheAvrLibcVectorsInOrder) {
    std::set<int> numbers;
    for (const auto& [name, number] : facts->vectors) numbers.insert(number);
    ASSERT_EQ(m.interrupttable.size(), numbers.size());
    const int wordspervector = facts->size("vectorbytes") / 2;
    int previous = 0;
    for (const InterruptEntry& e : m.interrupttable) {
        int number = -1;
        for (const std::string& name : avrlibcnamesof(e.name))
            if (facts->vectors.contains(name)) number = facts->vectors.at(name);
        ASSERT_GE(number, 1) << e.name << " is no avr-libc vector";
        EXPECT_EQ(e.vector, number * wordspervector) << e.name;
        EXPECT_GT(e.vector, previous) << e.name << ": priority order is vector order";
        previous = e.vector;
        EXPECT_EQ(e.polarity, (e.name == "ERDY" || e.name == "SPMR") ? 0 : 1) << e.name;
        EXPECT_FALSE(e.description.empty()) << e.name;
        // Enable and flag are named bits of registers the chip has.
        const std::pair<int, uint8_t> bits[] = {{e.enableaddress, e.enablemask}, {e.flagaddress, e.flagmask}};
        for (const auto& [address, mask] : bits) {
            ASSERT_GE(address, 0x20) << e.name;
            const int bit = bitindex(mask);
            ASSERT_GE(bit, 0) << e.name;
            const std::string name = bitname(address, bit);
            ASSERT_FALSE(name.empty()) << e.name << ": bit " << bit << " of $" << std::hex << address;
            EXPECT_EQ(facts->bits.at(name), bit) << e.name;
        }
    }
}

TEST_P(ShippedModel, ExternalInterruptKindsHaveTheirFlags) {
    if (m.kinds.int0 >= 2) {
        ASSERT_NE(m.int0flagaddress, 0);
        EXPECT_EQ(bitname(m.int0flagaddress, bitindex(m.int0flagmask)), "INTF0");
    }
    if (m.kinds.int1 >= 2) {
        ASSERT_NE(m.int1flagaddress, 0);
        EXPECT_EQ(bitname(m.int1flagaddress, bitindex(m.int1flagmask)), "INTF1");
    }
    // The sense-control register of each kind: EICRA for kinds 3 and 4, MCUCR otherwise.
    for (int kind : {m.kinds.int0, m.kinds.int1}) {
        if (kind == 3 || kind == 4) {
            EXPECT_NE(m.roles.eicra, 0);
        } else if (kind >= 2) {
            EXPECT_NE(m.roles.mcucr, 0);
        }
    }
}

TEST_P(ShippedModel, PeripheralKindsHaveTheRegistersTheyUse) {
    const RegisterRoles& r = m.roles;
    const int uart = m.kinds.uartconf;
    EXPECT_EQ(uart >= 2, r.udr != 0) << "USART kind " << uart;
    if (uart >= 2) {
        EXPECT_NE(r.ucsra, 0);
        EXPECT_NE(r.ucsrb, 0);
        EXPECT_NE(r.ubrrl, 0);
    }
    if (uart >= 2 && uart != 6 && uart != 7) { EXPECT_NE(r.ucsrc, 0) << "UCSRC's bit 6 gates this kind"; }
    if (uart == 3 || uart == 8) { EXPECT_EQ(r.ucsrc, r.ubrrh) << "kinds 3 and 8 share UCSRC's address"; }
    if (uart == 2 || uart == 4 || uart == 5) { EXPECT_NE(r.ucsrc, r.ubrrh); }

    const int adc = m.kinds.adcconf;
    EXPECT_EQ(adc >= 2, r.admux != 0) << "ADC kind " << adc;
    if (adc >= 2) {
        EXPECT_NE(r.adcsra, 0);
        EXPECT_NE(r.adch, 0);
        EXPECT_NE(r.adcl, 0);
        EXPECT_EQ(bitname(r.adcsra, 4), "ADIF");
    }
    if (adc == 2) { EXPECT_EQ(bitname(r.adcsrb, 4), "ADLAR"); }
    if (adc == 3 || adc == 4 || adc == 6) { EXPECT_EQ(bitname(r.admux, 5), "ADLAR"); }
    if (adc == 6) { EXPECT_GE(r.admux, 0x60) << "kind 6 is the ADC in extended I/O"; }

    EXPECT_EQ(m.kinds.eeconf >= 2, r.eecr != 0);
    if (m.kinds.eeconf >= 2) {
        EXPECT_NE(r.eedr, 0);
        EXPECT_NE(r.eearl, 0);
        if (m.eepromsize > 256) { EXPECT_NE(r.eearh, 0); }
    }

    ASSERT_GE(m.kinds.compconf.size(), 4u);
    const int comp = m.kinds.compconf[0];
    EXPECT_GE(comp, 2) << "every shipped part has a comparator";
    EXPECT_NE(r.acsr, 0);
    if (comp == 3) { EXPECT_EQ(bitname(r.adcsrb, 6), "ACME"); }
    if (comp == 4) { EXPECT_EQ(bitname(r.sfior, 3), "ACME"); }
    if (comp == 5) { EXPECT_EQ(bitname(r.acsr, 2), "ACME"); }
    if (comp >= 3) { EXPECT_GE(adc, 2) << "the comparator's multiplexer is the ADC's"; }
    // The bandgap select bit exists exactly where the model names a bandgap.
    EXPECT_EQ(m.kinds.compconf[1] >= 2, !bitname(r.acsr, 6).empty());
    for (int input : {m.kinds.compconf[2], m.kinds.compconf[3]}) {
        ASSERT_TRUE(input >= 0 && input < kAdcChannelCount);
        EXPECT_TRUE(m.adcchannels[input].exists) << "comparator input channel " << input << " has no pin";
    }
}

TEST_P(ShippedModel, StartupCodeCanWriteStatusAndStackPointerAndPeripheralsAreTracked) {
    // Registers among R0..R31 would keep every phase and the interrupt scan in every step.
    EXPECT_FALSE(m.peripheralsalwaysawake);
    EXPECT_FALSE(m.interruptsuntracked);
    EXPECT_EQ(m.datamask[kSregAddress], 0xFF);
    if (m.sramsize > 0) {
        EXPECT_EQ(m.datamask[kSplAddress], 0xFF);
        if (m.dataspacesize > 256) { EXPECT_EQ(m.datamask[kSphAddress], 0xFF); }
        EXPECT_EQ(m.datamask[96 + m.extendedio], 0xFF);
        EXPECT_EQ(m.datamask[m.dataspacesize - 1], 0xFF);
    }
    for (int reg = 0; reg < 32; ++reg) EXPECT_EQ(m.datamask[reg], 0xFF) << "R" << reg << " through ST";
}

TEST_P(ShippedModel, PinsLieOnPortsOfTheChip) {
    EXPECT_EQ(m.pincount, static_cast<int>(m.pins.size()));
    EXPECT_TRUE(m.pincount == 8 || m.pincount == 14 || m.pincount == 20 || m.pincount == 28 ||
                m.pincount == 40 || m.pincount == 64)
        << m.pincount << " pins have no package drawing";
    std::set<std::pair<int, int>> seen;
    for (const PackagePin& pin : m.pins) {
        if (pin.portcode == 0) {
            EXPECT_EQ(pin.type, 0) << pin.caption;
            continue;
        }
        const int port = pin.portcode - kPortCodeA;
        ASSERT_TRUE(port >= 0 && port < kPortCount) << pin.caption;
        EXPECT_TRUE(m.roles.portexists[port]) << pin.caption;
        EXPECT_TRUE(seen.insert({port, pin.bit}).second) << pin.caption << " twice";
        const std::string portbit = std::string("P") + static_cast<char>('A' + port) + std::to_string(pin.bit);
        EXPECT_TRUE(pin.caption.starts_with(portbit)) << pin.caption;
        EXPECT_EQ(pin.type, pin.adcchannel >= 0 ? 2 : 1) << pin.caption;
        // A package pin is an input the program can read.
        EXPECT_TRUE(facts->bits.contains("PIN" + portbit.substr(1))) << pin.caption;
    }
}

INSTANTIATE_TEST_SUITE_P(AvrLibc, ShippedModel, ::testing::ValuesIn(devicenames()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

// A role by its name: a register, or "port.X", "pin.X", "ddr.X", "exists.X" of port X.
int roleof(const RegisterRoles& r, const std::string& role) {
    using R = RegisterRoles;
    const std::map<std::string, int R::*> registers = {
        {"udr", &R::udr},       {"spl", &R::spl},       {"ucsra", &R::ucsra},   {"ucsrb", &R::ucsrb},
        {"ucsrc", &R::ucsrc},   {"ubrrl", &R::ubrrl},   {"ubrrh", &R::ubrrh},   {"eearl", &R::eearl},
        {"eearh", &R::eearh},   {"eecr", &R::eecr},     {"eedr", &R::eedr},     {"adcsra", &R::adcsra},
        {"adcsrb", &R::adcsrb}, {"acsr", &R::acsr},     {"acsrb", &R::acsrb},   {"eicra", &R::eicra},
        {"sfior", &R::sfior},   {"mcucr", &R::mcucr}};
    if (registers.contains(role)) return r.*registers.at(role);
    const size_t port = static_cast<size_t>(role.back() - 'A');
    if (role.starts_with("exists.")) return r.portexists.at(port);
    return (role.starts_with("port.") ? r.port : role.starts_with("pin.") ? r.pin : r.ddr).at(port);
}

TEST(Roles, FirstAlternativeWinsWhateverTheLineOrderAndIoAddressesGetThirtyTwoAdded) {
    for (const TableRow& row : tablerows("tables.txt", "Roles")) {
        std::vector<std::string> lines;
        std::istringstream in(row[0]);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        RegisterRoles roles;
        bindroles(lines, roles);
        std::istringstream names(row[1]), addresses(row[2]);
        for (std::string name, address; names >> name && addresses >> address;)
            EXPECT_EQ(roleof(roles, name), std::stoi(address, nullptr, 0)) << row.where << " " << name;
    }
}

TEST(Roles, UndefinedRolesStayAtZeroAndBindingStartsAfresh) {
    RegisterRoles roles;
    bindroles({".equ PORTA = $1B", ".equ ADMUX = $07"}, roles);
    bindroles({".equ ADCH = $05"}, roles);
    EXPECT_FALSE(roles.portexists[0]);
    EXPECT_EQ(roles.admux, 0);
    EXPECT_EQ(roles.adch, 0x25);
    EXPECT_EQ(roles.udr, 0);
    EXPECT_EQ(roles.sreg, 0);
}

}  // namespace
}  // namespace velmora::test
