#include <gtest/gtest.h>

#include "replay/exception_w.h"

namespace {

using namespace replay;

class application_failure : public exception_w {
 public:
  explicit application_failure(const std::u16string& message) : exception_w(message) {
    append_name_w(u"application");
    append_name_w(u"failure");
  }
};

TEST(Exception, NarrowTextsFollowFromTheWideOnes) {
  const application_failure failure(u"caf\u00e9 \u4e00");
  EXPECT_STREQ(application_failure(failure).name(), "application.failure");
  EXPECT_STREQ(application_failure(failure).message(), "caf\xe9 ?");
  EXPECT_STREQ(failure.what(), "application.failure[caf\xe9 ?]");
  EXPECT_EQ(failure.what_w(), std::u16string(u"application.failure[caf\u00e9 \u4e00]"));
}

}  // namespace
