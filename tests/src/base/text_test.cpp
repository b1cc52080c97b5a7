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
  EXPECT_EQ(base::toWideFromLocal(std::string(1100, 'x').c_str()), std::u16string(1023, u'x'));
  EXPECT_EQ(base::toUtf8(u"\u00e9\xd800"), "\xc3\xa9\xef\xbf\xbd");
  EXPECT_EQ(base::numberToText(4294967295U), u"4294967295");
}

// The two files are one on every system: the path keeps its text, and the name its bytes.
TEST(Paths, FolderIsMadeOnceAndUnitsBelow256AreTheBytesOfItsName) {
  const test::TemporaryFolder folder;
  const std::u16string made = folder.wide() + u"//caf\u00e9";
  EXPECT_FALSE(base::fileExists(made));
  EXPECT_TRUE(base::createFolder(folder.wide(), u"caf\u00e9"));
  EXPECT_TRUE(base::createFolder(folder.wide(), u"caf\u00e9")) << "it is there already";
  EXPECT_TRUE(base::createFolder(made, u"\u20ac+\U0001F600"));
  EXPECT_TRUE(base::fileExists(folder.wide() + u"/caf\u00e9\\\u20ac+\U0001F600"));
  EXPECT_FALSE(base::createFolder(made + u"\\missing", u"made"));
  EXPECT_FALSE(base::createFolder(u"", u"qbdiagnostics-test"));
}

}  // namespace
