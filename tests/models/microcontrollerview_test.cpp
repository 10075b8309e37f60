// The Microcontroller View model on the ATmega32 model file, over a small pin model that
// follows the port rules: a level is PORT on outputs and the external input elsewhere.

#include <gtest/gtest.h>

#include <array>

#include "models/datadirectory.h"
#include "models/microcontrollerview.h"
#include "models/modelfile.h"

namespace velmora::test {
namespace {

struct FakePins : PinAccess {
    Machine& m;
    std::array<uint8_t, kPortCount> inputs{};
    std::array<int, kAdcChannelCount> analog{};
    std::array<bool, kAdcChannelCount> mode{};
    int evaluations = 0;
    explicit FakePins(Machine& machine) : m(machine) {}

    uint8_t reg(const std::array<int, kPortCount>& a, int port) const {
        return a[port - kPortCodeA] ? m.datamem[a[port - kPortCodeA]] : 0;
    }
    void evaluate() override {
        ++evaluations;
        for (int p = 0; p < kPortCount; ++p) inputs[p] &= static_cast<uint8_t>(~reg(m.roles.ddr, kPortCodeA + p));
    }
    uint8_t direction(int port) const override { return reg(m.roles.ddr, port); }
    uint8_t input(int port) const override { return inputs[port - kPortCodeA]; }
    uint8_t level(int port) const override {
        const uint8_t ddr = direction(port);
        return static_cast<uint8_t>((reg(m.roles.port, port) & ddr) | (input(port) & ~ddr));
    }
    void toggleinput(int port, uint8_t mask) override { inputs[port - kPortCodeA] ^= mask; }
    int analoginput(int channel) const override { return analog[channel]; }
    void setanaloginput(int channel, int value) override { analog[channel] = value; }
    bool analogmode(int channel) const override { return mode[channel]; }
    void setanalogmode(int channel, bool on) override { mode[channel] = on; }
};

class ViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        ModelDefinitions definitions;
        const auto result = modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", "ATmega32", {}, m, definitions);
        ASSERT_TRUE(result.ok) << result.message;
        m.modelname = "ATmega32";
        view.rebuild(PinFilters{});
    }
    uint8_t& ddr(char port) { return m.datamem[m.roles.ddr[port - 'A']]; }
    uint8_t& portreg(char port) { return m.datamem[m.roles.port[port - 'A']]; }

    Machine m;
    FakePins pins{m};
    MicrocontrollerView view{m, pins};
    static constexpr int kPb0 = 0, kPb2 = 2, kVcc = 9, kPd2 = 15, kPa0 = 39, kPa7 = 32;
};

TEST_F(ViewTest, PinTableFromTheModel) {
    const auto& p = view.pins();
    ASSERT_EQ(p.size(), 40u);
    EXPECT_EQ(p[kPb0].port, kPortCodeA + 1);
    EXPECT_EQ(p[kPb0].mask, 1);
    EXPECT_EQ(p[kPb0].type, 1);
    EXPECT_EQ(p[kVcc].type, 0);
    EXPECT_EQ(p[kVcc].name, "VCC_");
    EXPECT_EQ(p[kPa0].channel, 0);
    EXPECT_EQ(p[kPa0].type, 2);
    EXPECT_EQ(p[kPa7].mask, 0x80);
    EXPECT_EQ(view.title(), "Microcontroller View - ATmega32");
    EXPECT_EQ(view.shown()[kVcc].button, PinButton::None);
    EXPECT_EQ(view.shown()[kVcc].level, PinLevel::None);
}

TEST_F(ViewTest, ToggleDrivesAnInputAndTheLevelFollows) {
    EXPECT_EQ(view.shown()[kPd2].leveltext, "OFF");
    view.leftclick(kPd2);
    EXPECT_EQ(pins.inputs[3], 0x04);
    EXPECT_EQ(view.shown()[kPd2].leveltext, "ON");
    EXPECT_EQ(view.shown()[kPd2].level, PinLevel::On);
    view.leftclick(kPd2);
    EXPECT_EQ(view.shown()[kPd2].leveltext, "OFF");
}

TEST_F(ViewTest, AnOutputDisablesItsButtonAndShowsThePortBit) {
    ddr('B') = 0x01;
    portreg('B') = 0x01;
    ASSERT_TRUE(view.refresh());
    EXPECT_FALSE(view.shown()[kPb0].enabled);
    EXPECT_EQ(view.shown()[kPb0].leveltext, "ON");
    view.leftclick(kPb0);
    EXPECT_EQ(pins.inputs[1], 0) << "a disabled button does nothing";
    EXPECT_TRUE(view.shown()[kPb0 + 1].enabled);
}

TEST_F(ViewTest, RightClickSwitchesAnalogUseOfTypeTwoPinsOnly) {
    view.rightclick(kPb0);
    EXPECT_EQ(view.shown()[kPb0].button, PinButton::Toggle);
    view.rightclick(kPa0);
    EXPECT_TRUE(pins.mode[0]);
    EXPECT_EQ(view.shown()[kPa0].button, PinButton::Analog);
    EXPECT_EQ(std::string(buttoncaption(view.shown()[kPa0].button)), "A");
    EXPECT_EQ(view.shown()[kPa0].level, PinLevel::Analog);
    // An analog pin keeps its button even when the program drives it.
    ddr('A') = 0x01;
    view.refresh();
    EXPECT_TRUE(view.shown()[kPa0].enabled);
    view.rightclick(kPa0);
    EXPECT_FALSE(pins.mode[0]);
    EXPECT_FALSE(view.shown()[kPa0].enabled);
}

TEST_F(ViewTest, AllAnalogTouchesTypeTwoPinsOnly) {
    view.setallanalog(true);
    EXPECT_TRUE(view.allanalog());
    for (int channel = 0; channel < 8; ++channel) EXPECT_TRUE(pins.mode[channel]) << channel;
    EXPECT_TRUE(pins.mode[8] && pins.mode[9]) << "AIN0 and AIN1 pins are type 2 on this model";
    EXPECT_EQ(view.shown()[kPb0].button, PinButton::Toggle);
    view.setallanalog(false);
    EXPECT_FALSE(view.allanalog());
    for (bool mode : pins.mode) EXPECT_FALSE(mode);
}

TEST_F(ViewTest, AnalogPanelSliderAndPrompt) {
    view.rightclick(kPa0);
    view.leftclick(kPa0);
    ASSERT_EQ(view.panelchannel(), 0);
    EXPECT_EQ(view.panelcaption(), "ADC0");
    view.sliderchanged(300, false);
    EXPECT_EQ(pins.analog[0], 300);
    EXPECT_EQ(view.shown()[kPa0].leveltext, "300");
    view.continuousslider = false;
    view.sliderchanged(400, false);
    EXPECT_EQ(pins.analog[0], 300) << "applied only on release";
    view.sliderchanged(400, true);
    EXPECT_EQ(pins.analog[0], 400);
    EXPECT_EQ(view.analogprompt(), "Enter new analog value [0-1023].");
    EXPECT_TRUE(view.enteranalog("1023"));
    EXPECT_EQ(pins.analog[0], 1023);
    for (const char* bad : {"1024", "-1", "abc", "", "5.5"}) EXPECT_FALSE(view.enteranalog(bad)) << bad;
    EXPECT_EQ(pins.analog[0], 1023);
    view.usevoltage = true;
    view.refresh();
    EXPECT_EQ(view.shown()[kPa0].leveltext, "5.00V");
    EXPECT_TRUE(view.enteranalog("2.5V"));
    EXPECT_EQ(pins.analog[0], 512);
    EXPECT_EQ(view.panelvalue(), "2.50V");
    EXPECT_FALSE(view.enteranalog("5.1"));
    view.closepanel();
    EXPECT_FALSE(view.panelchannel());
}

TEST_F(ViewTest, WhileRunningOnlyAChangeRepaints) {
    m.simulationrunning = true;
    EXPECT_TRUE(view.refresh()) << "the first look takes the copies";
    EXPECT_FALSE(view.refresh());
    EXPECT_FALSE(view.refresh());
    portreg('C') = 0xFF;  // PORTC on inputs changes no level
    EXPECT_FALSE(view.refresh());
    ddr('C') = 0x01;
    EXPECT_TRUE(view.refresh());
    EXPECT_EQ(view.shown()[21].leveltext, "ON") << "PC0";
    EXPECT_FALSE(view.refresh());
    pins.analog[3] = 7;
    EXPECT_TRUE(view.refresh());
    m.simulationrunning = false;
    EXPECT_TRUE(view.refresh()) << "when stopped every refresh paints";
    EXPECT_GT(pins.evaluations, 0) << "the pin model is evaluated first";
}

TEST_F(ViewTest, FiltersRebuildTheNames) {
    PinFilters filters{};
    filters[static_cast<int>(PinFunctionGroup::Adc)] = true;
    view.rebuild(filters);
    EXPECT_EQ(view.pins()[kPa0].name, "_PA0");
    EXPECT_EQ(view.pins()[kPb2].name, "PB2/INT2/AIN0_");
}

}  // namespace
}  // namespace velmora::test
