#include "replay/internet/web_request.h"

#include <gtest/gtest.h>

#include "internet/peer.h"

namespace {

using replay::internet::WebRequest;
using test::Peer;

// What execute() of `request` fails with.
std::u16string errorOf(WebRequest& request) {
  try {
    request.execute();
  } catch (const WebRequest::WebRequestError& error) {
    return error.message();
  }
  return u"";
}

TEST(Web, RequestAsksItsParametersAndKeepsTheAnswer) {
  const Peer peer;
  const std::string body = "<a>\r\n\t<b> 1\t</b>\n</a>\r";
  Peer::answer("HTTP/1.1 200 OK\r\n\r\n" + body, 99);
  WebRequest request;
  request.base_url = Peer::url("/x");
  request.parameters = {{"b b", "\xe9 /~"}, {"a", "A.-_z9"}, {"c", ""}};
  EXPECT_EQ(errorOf(request), u"");
  EXPECT_EQ(request.query, "?a=A.-_z9&b b=%E9%20%2F%7E&c=");
  EXPECT_EQ(request.url, request.base_url + request.query);
  EXPECT_TRUE(Peer::received.starts_with("GET /x?a=A.-_z9&b%20b=%E9%20%2F%7E&c= HTTP/1.1\r\n"));
  EXPECT_EQ(request.raw_body, body);
  EXPECT_EQ(request.body, "<a><b> 1</b></a>");
  EXPECT_EQ(request.value("a.b"), " 1");
  EXPECT_EQ(request.value("a.c"), "");
}

TEST(Web, RequestHasOneMessageForEachFailure) {
  const std::pair<const char*, const char16_t*> rows[] = {
      {"HTTP/1.1 204 No Content\r\n\r\n", u"Bad HTTP Response."},
      {"", u"HTTP-error: Connection closed."},
      {"+OK ready\r\n\r\n", u"HTTP-error: Invalid response."},
  };
  const Peer peer;
  WebRequest request;
  request.base_url = Peer::url("/");
  request.raw_body = "before";
  for (const auto& [reply, message] : rows) {
    Peer::answer(reply, 99);
    EXPECT_EQ(errorOf(request), message) << reply;
    EXPECT_EQ(request.raw_body, "before");
    EXPECT_TRUE(Peer::received.starts_with("GET /? HTTP/1.1\r\n"));
  }
  platform::sockets.socket = [](int, int, int) { return platform::noSocket; };
  EXPECT_EQ(errorOf(request), u"HTTP-error: Connection failed.");
  request.base_url = "http://nowhere.invalid/";
  test::Tables::emulateLookups();
  platform::sockets.gethostbyname = [](const char*) -> platform::hostent* { return nullptr; };
  EXPECT_EQ(errorOf(request), u"HTTP-error: Could not resolve hostname.");
  platform::sockets.WSAStartup = [](std::uint16_t, platform::SocketLibraryData*) { return 10091; };
  EXPECT_EQ(test::failureOf([&] { request.execute(); }),
            "internet.environment.subsystem_not_ready[WSAStartup() failed]");
}

}  // namespace
