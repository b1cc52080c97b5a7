#include "base/report_log.h"

#include <gtest/gtest.h>

#include <regex>

#include "platform/process.h"
#include "support/temporary_folder.h"

namespace {

using base::ReportLog;

class ReportLogTest : public testing::Test {
 protected:
  // A log in an empty folder.
  ReportLog log(int level = 2) const {
    std::filesystem::remove_all(folder_.path());
    std::filesystem::create_directory(folder_.path());
    return {folder_.wide(), u"Prefix-", u".log", u"NAME", u"%d-%m-%Y %H:%M:%S", level, false};
  }

  // The beginning of the file's content, with the prefix of each line as "|".
  std::string lines() const {
    const std::regex prefix("\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d\t\\(" +
                            std::to_string(platform::processNumber()) + ":" +
                            std::to_string(platform::threadNumber()) + "\\)\t");
    const auto file = test::onlyFile(folder_.path(), "Prefix-");
    return std::regex_replace(test::contentOf(file).substr(0, 500), prefix, "|");
  }

  test::TemporaryFolder folder_;
};

TEST_F(ReportLogTest, UnitAbove255CutsTheLineAndSilencesTheFileUntilItIsOpenedAnew) {
  ReportLog log = this->log();
  ASSERT_TRUE(log.open());
  log.write(u"one\n\t\u00e9\u00ff\r\ntwo");
  log.write(u"cut \u0100 here");
  log.write(u"lost");
  EXPECT_EQ(lines(), "|STARTING LOG\r\n|one\r\n\t\xe9\xff\r\r\ntwo\r\n|cut ") << "not flushed";
  log.close();
  std::filesystem::remove(test::onlyFile(folder_.path(), "Prefix-"));
  log.write(u"lost");
  log.write(u"kept");
  EXPECT_EQ(lines(), "|STARTING LOG\r\n|kept\r\n");
}

TEST_F(ReportLogTest, LevelDecidesWhichLinesAreWritten) {
  const char* const expected[] = {"", "|STARTING LOG\r\n", "|STARTING LOG\r\n|one\r\n",
                                  "|STARTING LOG\r\n|one\r\n|two\r\n"};
  for (const int level : {-1, 0, 1, 2}) {
    ReportLog log = this->log(level);
    ASSERT_TRUE(log.open());
    EXPECT_EQ(log.isEnabled(2), level == 2) << level;
    log.writeLine(u"one", false, true, 1);
    log.write(u"two");
    log.writeLine(u"nowhere", false, false, 0);
    EXPECT_EQ(lines(), expected[level + 1]) << level;
  }
}

TEST_F(ReportLogTest, FileGoesOnAtItsTopOnceItHasReachedTheLimitOfItsLevel) {
  for (const int level : {2, 4, 5}) {
    const std::size_t limit = level == 4 ? 1'000'000 : 500'000;
    ReportLog log = this->log(level);
    ASSERT_TRUE(log.open());
    const auto file = test::onlyFile(folder_.path(), "Prefix-");
    const std::size_t first = std::filesystem::file_size(file);
    const std::size_t around = first - std::string("STARTING LOG").size();
    log.write(std::u16string(1000 - first - around, u'.'));
    // A line feed counts as the two bytes that it takes.
    const std::u16string text = u"\n" + std::u16string(1000 - around - 2, u'.');
    for (std::size_t size = 1000; size < limit; size += 1000) log.write(text);
    EXPECT_EQ(std::filesystem::file_size(file), limit);
    log.write(u"on top");
    log.write(u"and below");
    EXPECT_TRUE(lines().starts_with("|on top\r\n|and below\r\n.")) << level;
    EXPECT_EQ(std::filesystem::file_size(file), limit) << "the file is not shortened";
  }
}

}  // namespace
