// Each folder below tests/worlds is a test: the built program runs on the server that lies there.
#include <gtest/gtest.h>

#include "support/world.h"

namespace {

class Worlds : public testing::TestWithParam<std::string> {};

TEST_P(Worlds, ShowTheExpectedReportAndConsole) {
  const test::World world(GetParam());
  const test::Shown shown = world.run();
  if (test::isRenewing()) world.renew(shown);
  const test::Shown expected = world.expected();
  EXPECT_EQ(shown.status, expected.status);
  EXPECT_EQ(test::joined(shown.console), test::joined(expected.console));
  EXPECT_EQ(test::joined(shown.report), test::joined(expected.report));
  EXPECT_TRUE(shown.status != "0" || !std::filesystem::exists(world.data() / "Quellbright"))
      << "a run that does not start leaves nothing behind";
  if (test::joined(shown.report).find("Succes!") != std::string::npos) {
    const auto log = test::onlyFile(world.data() / "Quellbright", "Quellbright-TESTLOGFILE-");
    EXPECT_EQ(world.shownReport(test::contentOf(log)),
              (test::Lines{"<entry>\tSTARTING LOG",
                           "<entry>\tThis is a sample output from the diagnistic tool."}));
  }
  EXPECT_TRUE(world.restore()) << "a database changed besides the events of the configuration";
}

INSTANTIATE_TEST_SUITE_P(All, Worlds, testing::ValuesIn(test::worldNames()),
                         [](const auto& world) { return world.param; });

}  // namespace
