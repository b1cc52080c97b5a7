#include "replay/internet/web_request.h"

#include <gtest/gtest.h>

#include "lib/replay/internet/peer.h"

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

TEST(Web, RequestAsksItsParametersAndKeepsTheAnswerOrHasOneMessageForEachFailure) {
  const Peer peer;
  const std::string body = "<a>\r\n\t<b> 1\t</b>\n</a>\r";
  WebRequest request;
  request.base_url = Peer::url("/x");
  request.parameters = {{"b b", "\xe9 /~"}, {"a", "A.-_z9"}, {"c", ""}};
  for (const auto& [reply, message] : {std::pair("HTTP/1.1 200 OK\r\n\r\n", u""),
                                       {"HTTP/1.1 204 No Content\r\n\r\n", u"Bad HTTP Response."},
                                       {"+OK ready\r\n\r\n", u"HTTP-error: Invalid response."}}) {
    Peer::answer(reply + body, 99);
    EXPECT_EQ(errorOf(request), message);
  }
  EXPECT_EQ(request.query, "?a=A.-_z9&b b=%E9%20%2F%7E&c=");
  EXPECT_EQ(request.url, request.base_url + request.query);
  EXPECT_TRUE(Peer::received.starts_with("GET /x?a=A.-_z9&b%20b=%E9%20%2F%7E&c= HTTP/1.1\r\n"));
  EXPECT_EQ(request.raw_body, body);
  EXPECT_EQ(request.body, "<a><b> 1</b></a>");
  EXPECT_EQ(request.value("a.b"), " 1");
  EXPECT_EQ(request.value("a.c"), "");

  platform::sockets.socket = [](int, int, int) { return platform::noSocket; };
  EXPECT_EQ(errorOf(request), u"HTTP-error: Connection failed.");
  request.base_url = "http://no host/";
  EXPECT_EQ(errorOf(request), u"HTTP-error: Could not resolve hostname.");
}

}  // namespace
