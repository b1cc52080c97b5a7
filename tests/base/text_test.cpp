#include "base/text.h"

#include <gtest/gtest.h>

#include "base/paths.h"
#include "support/temporary_folder.h"

namespace {

TEST(Text, EachWayAcrossTheBoundaryReadsTheSameBytesDifferently) {
  const std::string bytes = "a+AOk-\xc3\xa9";
  EXPECT_EQ(base::toWideFromUtf7(bytes), u"a\u00e9\u00c3\u00a9");
  EXPECT_EQ(base::toWideFromUtf8(bytes), u"a+AOk-\u00e9");
  EXPECT_EQ(base::toWideFromLocal(bytes.c_str()), u"a+AOk-\u00c3\u00a9");
  EXPECT_EQ(base::toStrictUtf8(u"\u00e9\xd800"), "\xc3\xa9\xef\xbf\xbd");
}

TEST(Text, LocalTextIsCutAtItsBuffer) {
  EXPECT_EQ(base::toWideFromLocal(std::string(1023, 'x').c_str()).size(), 1023U);
  EXPECT_EQ(base::toWideFromLocal(std::string(1100, 'x').c_str()).size(), 1023U);
}

TEST(Text, NumbersHaveAllTheirDigitsAndNoGrouping) {
  EXPECT_EQ(base::numberToText(0), u"0");
  EXPECT_EQ(base::numberToText(4294967295U), u"4294967295");
}

TEST(Paths, FolderIsMadeOnceAndAMissingOrEmptyParentFails) {
  const test::TemporaryFolder folder;
  const std::u16string parent = folder.wide();
  EXPECT_FALSE(base::fileExists(parent + u"\\made"));
  EXPECT_TRUE(base::createFolder(parent, u"made"));
  EXPECT_TRUE(base::fileExists(parent + u"\\made"));
  EXPECT_TRUE(base::createFolder(parent, u"made")) << "it is there already";
  EXPECT_FALSE(base::createFolder(parent + u"\\missing", u"made"));
  EXPECT_FALSE(base::createFolder(u"", u"qbdiagnostics-test"));
}

// The two files are one on every system: the path keeps its text, and the name its bytes.
TEST(Paths, UnitsBelow256AreTheBytesOfTheName) {
  const test::TemporaryFolder folder;
  EXPECT_TRUE(base::createFolder(folder.wide(), u"caf\u00e9"));
  EXPECT_TRUE(base::createFolder(folder.wide() + u"//caf\u00e9", u"\u20ac+\U0001F600"));
  EXPECT_TRUE(base::fileExists(folder.wide() + u"/caf\u00e9\\\u20ac+\U0001F600"));
  EXPECT_FALSE(base::fileExists(folder.wide() + u"/cafe"));
}

}  // namespace
