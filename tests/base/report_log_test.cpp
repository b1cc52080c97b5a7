#include "base/report_log.h"

#include <gtest/gtest.h>

#include <regex>

#include "platform/process.h"
#include "support/temporary_folder.h"

namespace {

using base::ReportLog;

const std::string prefixPattern = "\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d\t\\(" +
                                  std::to_string(platform::processNumber()) + ":" +
                                  std::to_string(platform::threadNumber()) + "\\)\t";

class ReportLogTest : public testing::Test {
 protected:
  ReportLog log(int level = 2) const {
    return {folder_.wide(), u"Prefix-", u".log", u"NAME", u"%d-%m-%Y %H:%M:%S", level, false};
  }

  std::string content() const { return test::contentOf(test::onlyFile(folder_.path(), "Prefix-")); }

  // The file's content with the prefix of each line as "|".
  std::string lines() const {
    return std::regex_replace(content(), std::regex(prefixPattern), "|");
  }

  test::TemporaryFolder folder_;
};

TEST_F(ReportLogTest, LineFeedsReachTheDiskAsCrLfAndUnitsBelow256AsBytes) {
  ReportLog log = this->log();
  ASSERT_TRUE(log.open());
  log.write(u"one\n\t\u00e9\u00ff\r\ntwo");
  EXPECT_EQ(lines(), "|STARTING LOG\r\n|one\r\n\t\xe9\xff\r\r\ntwo\r\n") << "flushed before close";
}

TEST_F(ReportLogTest, UnitAbove255CutsTheLineAndSilencesTheFileForGood) {
  ReportLog log = this->log();
  ASSERT_TRUE(log.open());
  log.write(u"kept");
  log.write(u"cut \u20ac here");
  log.write(u"lost");
  EXPECT_EQ(lines(), "|STARTING LOG\r\n|kept\r\n|cut ");
}

TEST_F(ReportLogTest, ClosedLogOpensAgainAndLosesTheLine) {
  ReportLog log = this->log();
  ASSERT_TRUE(log.open());
  log.write(u"cut \u20ac");
  log.close();
  std::filesystem::remove(test::onlyFile(folder_.path(), "Prefix-"));
  log.write(u"lost");
  log.write(u"kept");
  EXPECT_EQ(lines(), "|STARTING LOG\r\n|kept\r\n");
}

TEST_F(ReportLogTest, LevelDecidesWhichLinesAreWritten) {
  const struct {
    int level;
    bool enabled;
    std::string expected;
  } rows[] = {{-1, false, ""},
              {0, false, "|STARTING LOG\r\n"},
              {1, false, "|STARTING LOG\r\n|one\r\n"},
              {2, true, "|STARTING LOG\r\n|one\r\n|two\r\n"}};
  for (const auto& row : rows) {
    ReportLog log = this->log(row.level);
    ASSERT_TRUE(log.open());
    EXPECT_EQ(log.isEnabled(2), row.enabled) << row.level;
    log.writeLine(u"one", false, true, 1);
    log.write(u"two");
    log.writeLine(u"nowhere", false, false, 0);
    log.close();
    EXPECT_EQ(lines(), row.expected) << row.level;
    std::filesystem::remove(test::onlyFile(folder_.path(), "Prefix-"));
  }
}

// Writes lines that take 1,000 bytes on the disk each and gives the size of the file afterwards.
std::size_t sizeAfter(int lineCount, ReportLog& log, const std::filesystem::path& folder) {
  EXPECT_TRUE(log.open());
  const auto file = test::onlyFile(folder, "Prefix-");
  const std::size_t first = test::contentOf(file).size();
  const std::size_t prefix = first - std::string("STARTING LOG\r\n").size();
  log.write(std::u16string(1000 - first - prefix - 2, u'.'));
  std::u16string text(1000 - prefix - 2, u'.');
  // A line feed counts as the two bytes that it takes.
  text.replace(10, 2, u"\n");
  for (int line = 0; line < lineCount; ++line) log.write(text);
  return test::contentOf(file).size();
}

TEST_F(ReportLogTest, FileGoesOnAtItsTopOnceItHasReachedTheLimit) {
  ReportLog log = this->log();
  EXPECT_EQ(sizeAfter(499, log, folder_.path()), 500'000U);
  log.write(u"on top");
  log.write(u"and below");
  log.close();
  EXPECT_TRUE(lines().starts_with("|on top\r\n|and below\r\n.")) << lines().substr(0, 100);
  EXPECT_EQ(content().size(), 500'000U) << "the file is not shortened";
}

TEST_F(ReportLogTest, OnlyLevelFourHasTheLargerLimit) {
  ReportLog verbose = log(4);
  EXPECT_EQ(sizeAfter(998, verbose, folder_.path()), 999'000U);
  verbose.close();
  std::filesystem::remove(test::onlyFile(folder_.path(), "Prefix-"));
  ReportLog above = log(5);
  EXPECT_EQ(sizeAfter(600, above, folder_.path()), 500'000U);
}

TEST_F(ReportLogTest, NameThatWasTriedIsToldAlsoAfterAFailure) {
  ReportLog log(folder_.wide() + u"/missing", u"Prefix-", u".log", u"NAME", u"%H", 2, false);
  EXPECT_FALSE(log.open());
  const std::u16string name = log.fileName();
  EXPECT_EQ(name.substr(0, name.size() - 18), folder_.wide() + u"/missing\\Prefix-");
  EXPECT_EQ(name.substr(name.size() - 4), u".log");
  std::filesystem::create_directory(folder_.path() / "missing");
  log.write(u"opens the file and is lost");
  log.close();
  EXPECT_EQ(
      std::regex_replace(test::contentOf(test::onlyFile(folder_.path() / "missing", "Prefix-")),
                         std::regex("^\\d\\d\t\\(\\d+:\\d+\\)\t"), "|"),
      "|STARTING LOG\r\n");
}

}  // namespace
