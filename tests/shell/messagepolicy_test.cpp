// One decision for every message: modal box or the Confirmation window.

#include <gtest/gtest.h>

#include "core/memorysettings.h"
#include "shell/messagepolicy.h"

namespace velmora::test {
namespace {

struct RecordingDisplay : MessageDisplay {
    std::vector<std::string> modal, titles;
    std::vector<std::vector<std::string>> confirmations;
    std::vector<int> durations;
    void modalbox(const std::string& title, const std::string& text, MessageKind) override {
        titles.push_back(title);
        modal.push_back(text);
    }
    void confirmation(const std::vector<std::string>& lines, int seconds) override {
        confirmations.push_back(lines);
        durations.push_back(seconds);
    }
};

struct MessagePolicyTest : ::testing::Test {
    MemorySettings settings;
    RecordingDisplay display;
    MessagePolicy policy{settings, display};
};

TEST_F(MessagePolicyTest, ConfirmationWindowByDefaultForMessageDurationSeconds) {
    policy.show("Operation completed.\nTotal 42 (0.04K) program bytes loaded.", MessageKind::Information);
    ASSERT_EQ(display.confirmations.size(), 1u);
    EXPECT_TRUE(display.modal.empty());
    EXPECT_EQ(display.confirmations[0],
              (std::vector<std::string>{"Operation completed.", "Total 42 (0.04K) program bytes loaded."}));
    EXPECT_EQ(display.durations[0], 4);
    settings.putsetting("Message Duration", "9");
    policy.show("Please stop the simulation first.", MessageKind::Exclamation);
    EXPECT_EQ(display.durations[1], 9);
}

TEST_F(MessagePolicyTest, ShowConfirmationBoxesGivesAModalBoxTitledWithTheProgramName) {
    settings.putsetting("Show Confirmations", "ON");
    policy.show("Program memory saved.", MessageKind::Information);
    ASSERT_EQ(display.modal.size(), 1u);
    EXPECT_EQ(display.titles[0], "Velmora");
    EXPECT_TRUE(display.confirmations.empty());
}

TEST_F(MessagePolicyTest, FileErrorsAndStackFaultsAreAlwaysModal) {
    policy.show("Stack Pointer out of SRAM space!", MessageKind::Critical);
    EXPECT_EQ(display.modal.size(), 1u);
    EXPECT_TRUE(display.confirmations.empty());
}

TEST(MessagePolicy, TheConfirmationWindowShowsSevenLinesAtMost) {
    EXPECT_EQ(confirmationlines("1\n2\n3\n4\n5\n6\n7\n8\n9").size(), 7u);
    EXPECT_EQ(confirmationlines("1\n2\n3\n4\n5\n6\n7\n8\n9").back(), "7");
    EXPECT_EQ(confirmationlines("one").size(), 1u);
}

}  // namespace
}  // namespace velmora::test
