// Real connections to a server on this machine that does what it should not.

#include <gtest/gtest.h>

#include "internet/peer.h"
#include "internet/tables.h"
#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/transport.h"
#include "replay/internet/web_request.h"

namespace {

using namespace replay::internet;
using test::failureOf;
using test::Peer;
using Ending = Peer::Ending;

// Counts for the peer what has arrived; a test may set the most that is taken at once, and another
// time-out.
class CountedTables : public test::Tables {
 public:
  CountedTables() {
    system_ = original();
    largest = 1 << 30;
    timeout = 30'000;
    platform::sockets.recv = [](platform::SocketHandle socket, char* bytes, int count, int flags) {
      const int received = system_.recv(socket, bytes, std::min(count, largest), flags);
      if (received > 0) Peer::receivedByClient() += static_cast<std::size_t>(received);
      return received;
    };
    platform::sockets.setsockopt = [](platform::SocketHandle socket, int level, int option,
                                      const char*, int length) {
      return system_.setsockopt(socket, level, option, reinterpret_cast<const char*>(&timeout),
                                length);
    };
  }

  static inline int largest = 0;
  static inline std::uint32_t timeout = 0;  ///< milliseconds

 private:
  static inline platform::SocketsApi system_;
};

/// Status and body of a reply of `peer`, or what failed.
std::string outcome(const Peer& peer) {
  std::string text;
  const std::string failure = failureOf([&] {
    const http::response reply = http::get(http::request(peer.url() + "/x"));
    text = std::to_string(reply.status) + "|" + reply.body;
  });
  return failure.empty() ? text : failure;
}

class HostilePeer : public testing::Test {
 protected:
  CountedTables tables_;
  environment environment_;
};

TEST_F(HostilePeer, ReplyCutAnywhereIsNeverTakenForAWholeOne) {
  const std::string head = "HTTP/1.1 200 OK\r\n";
  const struct {
    std::string bytes;
    std::size_t complete;  // from this many bytes on the reply counts
    bool mayBeShort;       // a body that nobody told the length of
  } rows[] = {
      {head + "Content-Length: 5\r\n\r\nhello", 43, false},
      {head + "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n", 60, false},
      {head + "\r\nhello", 19, true},
  };
  Peer peer({});
  for (const auto& row : rows) {
    for (const Ending ending : {Ending::close, Ending::reset}) {
      for (std::size_t cut = 0; cut <= row.bytes.size(); ++cut) {
        peer.answerWith({row.bytes.substr(0, cut), ending});
        std::string expected = "200|hello";
        if (row.mayBeShort) expected.resize(4 + cut - std::min(cut, row.complete));
        if (cut < row.complete) expected = "http.closed[]";
        ASSERT_EQ(outcome(peer), expected) << cut << " bytes of " << row.bytes;
      }
    }
  }
}

TEST_F(HostilePeer, BytesThatComeOneByOneMakeTheSameReply) {
  CountedTables::largest = 1;
  const Peer peer({"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n"});
  EXPECT_EQ(outcome(peer), "200|hello");
  EXPECT_EQ(peer.request(), "GET /x HTTP/1.1\r\nConnection: close\r\nHost: 127.0.0.1\r\n\r\n");
}

TEST_F(HostilePeer, HeaderBlockOfMegabytesComesThrough) {
  std::string bytes = "HTTP/1.1 200 OK\r\nLong: " + std::string(3U << 20U, 'x') + "\r\n";
  for (int line = 0; line < 30000; ++line) {
    bytes += "Name-" + std::to_string(line) + ": " + std::string(60, 'y') + "\r\n";
  }
  const Peer peer({bytes + "Content-Length: 5\r\n\r\nhello"});
  const http::response reply = http::get(http::request(peer.url()));
  EXPECT_EQ(reply.headers.size(), 30002U);
  EXPECT_EQ(reply.headers.at("long").size(), 3U << 20U);
  EXPECT_EQ(reply.body, "hello");
}

TEST_F(HostilePeer, SilenceEndsWithTheTimeOut) {
  CountedTables::timeout = 50;
  Peer peer({"", Ending::silence});
  const http::request request(peer.url());
  transport::tcp::raw stream;
  stream.open(request.address);
  stream.connect(request.address);
  stream.set_receive_timeout();
  stream.write("GET / HTTP/1.1\r\n\r\n");
  std::string text;
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(failureOf([&] { stream.read_some(text); }),
              "internet.transport.connection_failed.connection_timed_out[recv() failed]");
  }
  stream.close();
  EXPECT_EQ(outcome(peer), "http.closed[]");
  peer.answerWith({"HTTP/1.1 200 OK\r\n\r\nhel", Ending::silence});
  EXPECT_EQ(outcome(peer), "200|hel");
}

TEST_F(HostilePeer, ClosedPortRefuses) {
  const std::string url = Peer({}).url();
  const http::request request(url);
  transport::tcp::raw stream;
  stream.open(request.address);
  EXPECT_EQ(failureOf([&] { stream.connect(request.address); }),
            "internet.transport.connection_failed.connection_refused[connect() failed]");
}

TEST_F(HostilePeer, HandleThatTheSystemDoesNotKnowClosesInSilence) {
  struct Stream : transport::tcp::raw {
    using raw::socket;
  } stream;
  stream.open(address::ip4());
  EXPECT_EQ(platform::sockets.closesocket(stream.socket()), 0);
  stream.close();
}

// What execute() of `request` fails with.
std::u16string errorOf(WebRequest& request) {
  try {
    request.execute();
  } catch (const WebRequest::WebRequestError& error) {
    return error.message();
  }
  return u"";
}

TEST_F(HostilePeer, WebRequestAsksItsParametersAndKeepsTheAnswer) {
  const Peer peer({"HTTP/1.1 200 OK\r\n\r\n<a>\r\n\t<b> 1\t</b>\n</a>\r"});
  WebRequest request;
  request.base_url = peer.url() + "/x";
  request.parameters = {{"b b", "\xe9 /~"}, {"a", "A.-_z9"}, {"c", ""}};
  EXPECT_EQ(errorOf(request), u"");
  EXPECT_EQ(request.query, "?a=A.-_z9&b b=%E9%20%2F%7E&c=");
  EXPECT_EQ(request.url, request.base_url + request.query);
  EXPECT_TRUE(peer.request().starts_with("GET /x?a=A.-_z9&b%20b=%E9%20%2F%7E&c= HTTP/1.1\r\n"));
  EXPECT_EQ(request.raw_body, "<a>\r\n\t<b> 1\t</b>\n</a>\r");
  EXPECT_EQ(request.body, "<a><b> 1</b></a>");
  EXPECT_EQ(request.value("a.b"), " 1");
  EXPECT_EQ(request.value("a.c"), "");
  request.parameters.clear();
  EXPECT_EQ(errorOf(request), u"");
  EXPECT_TRUE(peer.request().starts_with("GET /x? HTTP/1.1\r\n"));
}

TEST_F(HostilePeer, WebRequestHasOneMessageForEachFailure) {
  const struct {
    const char* reply;
    const char16_t* message;
  } rows[] = {
      {"HTTP/1.1 204 No Content\r\n\r\n", u"Bad HTTP Response."},
      {"HTTP/1.1 301 Moved\r\nLocation: /\r\n\r\n", u"Bad HTTP Response."},
      {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n", u"HTTP-error: Connection closed."},
      {"", u"HTTP-error: Connection closed."},
      {"+OK ready\r\n\r\n", u"HTTP-error: Invalid response."},
  };
  Peer peer({});
  WebRequest request;
  request.base_url = peer.url() + "/";
  request.raw_body = "before";
  for (const auto& row : rows) {
    peer.answerWith({row.reply});
    EXPECT_EQ(errorOf(request), row.message) << row.reply;
    EXPECT_EQ(request.raw_body, "before");
  }
  platform::sockets.socket = [](int, int, int) { return platform::noSocket; };
  EXPECT_EQ(errorOf(request), u"HTTP-error: Connection failed.");
  platform::systemLibraries.LoadLibraryA = [](const char*) -> void* { return nullptr; };
  test::Tables::lookup() = {};
  platform::sockets.gethostbyname = [](const char*) -> platform::hostent* { return nullptr; };
  request.base_url = "http://nowhere.invalid/";
  EXPECT_EQ(errorOf(request), u"HTTP-error: Could not resolve hostname.");
  platform::sockets.WSAStartup = [](std::uint16_t, platform::SocketLibraryData*) { return 10091; };
  EXPECT_EQ(failureOf([&] { request.execute(); }),
            "internet.environment.subsystem_not_ready[WSAStartup() failed]");
}

TEST_F(HostilePeer, WebRequestToAClosedPortSaysThatTheConnectionClosed) {
  WebRequest request;
  request.base_url = Peer({}).url() + "/";
  EXPECT_EQ(errorOf(request), u"HTTP-error: Connection closed.");
}

}  // namespace
