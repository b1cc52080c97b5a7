#include <gtest/gtest.h>

#include <memory>

#include "replay/exception_w.h"
#include "replay/internet/address.h"
#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/ssl.h"
#include "replay/internet/transport.h"
#include "replay/unicode.h"
#include "replay/variant.h"

namespace {

using namespace replay;
using namespace replay::internet;
using tcp_base = transport::tcp::base;

// An error class and the bases through which a caller may catch it.
template <typename Thrown, typename... Bases>
void expect_failure(const std::string& name) {
  try {
    throw Thrown("why");
  } catch (const exception& caught) {
    EXPECT_EQ(caught.name(), name);
    EXPECT_STREQ(caught.message(), "why");
    EXPECT_EQ(caught.what(), name + "[why]");
    EXPECT_EQ(caught.what(), name + "[why]") << "the second call doubles nothing";
    EXPECT_TRUE(((dynamic_cast<const Bases*>(&caught) != nullptr) && ...)) << name;
  }
}

TEST(Exception, EachClassTellsItsChainAndIsCaughtThroughIt) {
  expect_failure<unicode::generic>("unicode");
  expect_failure<unicode::out_of_memory, unicode::generic>("unicode.out_of_memory");
  expect_failure<unicode::invalid_codepage, unicode::generic>("unicode.invalid_codepage");
  expect_failure<unicode::unmappable_character, unicode::generic>("unicode.unmappable_character");
  expect_failure<variant::generic>("variant");
  using environment_generic = environment::generic;
  expect_failure<environment_generic>("internet.environment");
  expect_failure<environment::subsystem_not_ready, environment_generic>(
      "internet.environment.subsystem_not_ready");
  expect_failure<environment::subsystem_failed, environment_generic>(
      "internet.environment.subsystem_failed");
  expect_failure<environment::version_not_supported, environment_generic>(
      "internet.environment.version_not_supported");
  expect_failure<address::generic>("internet.address");
  expect_failure<address::invalid_address_format, address::generic>(
      "internet.address.invalid_address_format");
  expect_failure<address::host_not_found, address::generic>("internet.address.host_not_found");
  expect_failure<address::service_not_found, address::generic>(
      "internet.address.service_not_found");
  expect_failure<http::generic>("http");
  expect_failure<http::closed, http::generic>("http.closed");
  expect_failure<http::aborted, http::generic>("http.aborted");
  expect_failure<http::invalid_response, http::generic>("http.invalid_response");
}

TEST(Exception, NamesOfStreamFailuresLeaveOutTheNamespacesAroundThem) {
  using transport::generic;
  using failed = tcp_base::connection_failed;
  const std::string root = "internet.transport";
  const std::string family = root + ".connection_failed";
  expect_failure<generic>(root);
  expect_failure<transport::operation_interrupted, generic>(root + ".operation_interrupted");
  expect_failure<transport::not_a_socket, generic>(root + ".not_a_socket");
  expect_failure<transport::address_in_use, generic>(root + ".address_in_use");
  expect_failure<transport::address_not_valid, generic>(root + ".address_not_valid");
  expect_failure<transport::tcp::ssl::security, generic>(root + ".security");
  expect_failure<failed, generic>(family);
  expect_failure<tcp_base::connection_aborted, failed>(family + ".connection_aborted");
  expect_failure<tcp_base::connection_closed, failed>(family + ".connection_closed");
  expect_failure<tcp_base::connection_refused, failed>(family + ".connection_refused");
  expect_failure<tcp_base::connection_reset, failed>(family + ".connection_reset");
  expect_failure<tcp_base::connection_timed_out, failed>(family + ".connection_timed_out");
  expect_failure<tcp_base::network_unreachable, failed>(family + ".network_unreachable");
  expect_failure<tcp_base::host_unreachable, failed>(family + ".host_unreachable");
}

TEST(Exception, CopyOutlivesTheOriginal) {
  auto original = std::make_unique<tcp_base::connection_refused>("connect() failed");
  const tcp_base::connection_refused copy = *original;
  original.reset();
  EXPECT_STREQ(copy.what(),
               "internet.transport.connection_failed.connection_refused[connect() failed]");
}

class application_failure : public exception_w {
 public:
  explicit application_failure(const std::u16string& message) : exception_w(message) {
    append_name_w(u"application");
    append_name_w(u"failure");
  }
};

TEST(ExceptionW, NarrowTextsFollowFromTheWideOnes) {
  const application_failure failure(u"caf\u00e9 \u4e00");
  EXPECT_EQ(failure.what_w(), std::u16string(u"application.failure[caf\u00e9 \u4e00]"));
  EXPECT_STREQ(failure.what(), "application.failure[caf\xe9 ?]");
  EXPECT_STREQ(failure.message(), "caf\xe9 ?");
  const exception& as_root = failure;
  EXPECT_STREQ(as_root.name(), "application.failure");
}

}  // namespace
