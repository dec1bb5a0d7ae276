#include "frame/auto_test_switch.h"

#include <gtest/gtest.h>

namespace tarnlog {
namespace {

using State = AutoTestSwitch::State;

struct SwitchCase {
  std::vector<std::string> args;
  std::string_view switchText;
  State state;
  std::string folder;
};

TEST(AutoTestSwitchTest, ReadsSwitchAndFolder) {
  const std::vector<SwitchCase> cases{
      SwitchCase{{"tarnlog", "-RS", "-PATH", "/t/logs"}, kStaticSwitch, State::kTaken, "/t/logs"},
      SwitchCase{{"tarnlog", "-N", "-PATH", "/t"}, kNoiseSwitch, State::kTaken, "/t"},
      SwitchCase{{"tarnlog", "-AUTO", "-PATH", "/t"}, kAutoSwitch, State::kTaken, "/t"},
      // Another page's switch is not this page's.
      SwitchCase{{"tarnlog", "-CT", "-PATH", "/t"}, kStaticSwitch, State::kAbsent, ""},
      // Exact and case-sensitive.
      SwitchCase{{"tarnlog", "-rs", "-PATH", "/t"}, kStaticSwitch, State::kAbsent, ""},
      SwitchCase{{"tarnlog", "-RSX", "-PATH", "/t"}, kStaticSwitch, State::kAbsent, ""},
      // Only argc of exactly 4.
      SwitchCase{{"tarnlog", "-RS", "-PATH", "/t", "x"}, kStaticSwitch, State::kIgnored, ""},
      SwitchCase{{"tarnlog", "-RS", "-PATH"}, kStaticSwitch, State::kIgnored, ""},
      SwitchCase{{"tarnlog", "-RS"}, kStaticSwitch, State::kIgnored, ""},
      // -PATH found from argv[2] on; nothing after it leaves the folder empty.
      SwitchCase{{"tarnlog", "-RS", "/t", "-PATH"}, kStaticSwitch, State::kTaken, ""},
      SwitchCase{{"tarnlog", "-RS", "-path", "/t"}, kStaticSwitch, State::kTaken, ""},
      SwitchCase{{"tarnlog"}, kStaticSwitch, State::kAbsent, ""}};
  for (const SwitchCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.args) + " " + std::string(c.switchText));
    const AutoTestSwitch found = ReadAutoTestSwitch(CommandLine(c.args), c.switchText);
    EXPECT_EQ(found.state, c.state);
    EXPECT_EQ(found.folder, c.folder);
  }
}

}  // namespace
}  // namespace tarnlog
