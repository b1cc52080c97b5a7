#include <gtest/gtest.h>

#include <memory>

#include "replay/exception_w.h"
#include "replay/internet/ssl.h"
#include "replay/internet/transport.h"

namespace {

using namespace replay;
using namespace replay::internet::transport;

// What each of the classes says of itself, one to a line.
template <typename... Failures>
std::string texts() {
  return ((std::string(Failures("why").what()) + "\n") + ...);
}

// The namespaces and classes around a stream's failure are no part of its name.
TEST(Exception, NamesOfStreamFailuresAreTheirFamily) {
  EXPECT_EQ((texts<generic, operation_interrupted, not_a_socket, address_in_use, address_not_valid,
                   tcp::ssl::security>()),
            "internet.transport[why]\n"
            "internet.transport.operation_interrupted[why]\n"
            "internet.transport.not_a_socket[why]\n"
            "internet.transport.address_in_use[why]\n"
            "internet.transport.address_not_valid[why]\n"
            "internet.transport.security[why]\n");
  using failures = tcp::base;
  EXPECT_EQ((texts<failures::connection_failed, failures::connection_aborted,
                   failures::connection_closed, failures::connection_refused,
                   failures::connection_reset, failures::connection_timed_out,
                   failures::network_unreachable, failures::host_unreachable>()),
            "internet.transport.connection_failed[why]\n"
            "internet.transport.connection_failed.connection_aborted[why]\n"
            "internet.transport.connection_failed.connection_closed[why]\n"
            "internet.transport.connection_failed.connection_refused[why]\n"
            "internet.transport.connection_failed.connection_reset[why]\n"
            "internet.transport.connection_failed.connection_timed_out[why]\n"
            "internet.transport.connection_failed.network_unreachable[why]\n"
            "internet.transport.connection_failed.host_unreachable[why]\n");
}

class application_failure : public exception_w {
 public:
  explicit application_failure(const std::u16string& message) : exception_w(message) {
    append_name_w(u"application");
    append_name_w(u"failure");
  }
};

TEST(Exception, CopyOutlivesTheOriginalAndSaysTheSameEachTime) {
  auto original = std::make_unique<tcp::base::connection_failed>("why");
  const tcp::base::connection_failed copy = *original;
  original.reset();
  for (int time = 0; time < 2; ++time) {
    EXPECT_STREQ(copy.what(), "internet.transport.connection_failed[why]");
    EXPECT_STREQ(copy.message(), "why");
    EXPECT_STREQ(copy.name(), "internet.transport.connection_failed");
  }
}

TEST(Exception, NarrowTextsFollowFromTheWideOnes) {
  const application_failure failure(u"caf\u00e9 \u4e00");
  EXPECT_STREQ(application_failure(failure).name(), "application.failure");
  EXPECT_STREQ(application_failure(failure).message(), "caf\xe9 ?");
  EXPECT_STREQ(failure.what(), "application.failure[caf\xe9 ?]");
  EXPECT_EQ(failure.what_w(), std::u16string(u"application.failure[caf\u00e9 \u4e00]"));
}

}  // namespace
