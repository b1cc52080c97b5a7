#include "replay/internet/http.h"

#include <gtest/gtest.h>

#include "lib/replay/internet/peer.h"
#include "support/rows.h"

namespace {

using namespace replay::internet;
using test::failureOf;
using test::Peer;

std::string textOf(const http::header_map& headers) {
  std::string text;
  for (const auto& [name, value] : headers) text.append(" ").append(name + "=").append(value);
  return text;
}

TEST(Http, AddressTextFallsIntoHostPortAndPath) {
  const test::Tables tables;
  test::Tables::emulateLookups();
  static char loopback[] = {127, 0, 0, 9};
  static char* addresses[] = {loopback, nullptr};
  static platform::hostent host{loopback, nullptr, 2, 4, addresses};
  platform::sockets.gethostbyname = [](const char*) { return &host; };
  for (const test::TextRow& row : test::rowsOf("lib/replay/internet/requests.txt", 4)) {
    const http::request request(row.fields[0]);
    EXPECT_EQ(std::to_string(request.address.port()), row.fields[2]) << row.where;
    EXPECT_EQ(request.uri, row.fields[3]) << row.where;
    EXPECT_EQ(textOf(request.headers), " Connection=close Host=" + row.fields[1]) << row.where;
  }
}

// Status, headers and body of the reply, or what failed.
std::string outcome() {
  std::string text;
  const std::string failure = failureOf([&] {
    const http::response reply = http::get(http::request(Peer::url("/x")));
    text = std::to_string(reply.status) + textOf(reply.headers) + "|" + reply.body;
  });
  return failure.empty() ? text : failure;
}

TEST(Http, ReplyDoesNotDependOnWhereThePacketsEnd) {
  const Peer peer;
  for (const test::TextRow& row : test::rowsOf("lib/replay/internet/replies.txt", 3)) {
    const std::string& bytes = row.fields[1];
    for (std::size_t split = 0; split < bytes.size(); ++split) {
      Peer::answer(bytes, 1, std::stoi(row.fields[0]));
      if (split != 0) Peer::pieces = {bytes.substr(0, split), bytes.substr(split)};
      ASSERT_EQ(outcome(), row.fields[2]) << row.where << " split at " << split;
      EXPECT_TRUE(Peer::calls.ends_with("closesocket"));
    }
    EXPECT_EQ(Peer::received, "GET /x HTTP/1.1\r\nConnection: close\r\nHost: 127.0.0.1\r\n\r\n");
  }
}

// Writes down what it is told, and says no at one of the calls.
class Witness : public http::monitor_type {
 public:
  explicit Witness(int last) : left_(last) {}

  bool on_request(const std::string& method, const std::string& uri) override {
    return note(method + " " + uri + " after " + std::to_string(Peer::received.size()));
  }
  bool on_status(std::int32_t status) override { return note(std::to_string(status)); }
  bool on_request_header(const std::string& name, const std::string& value) override {
    return note(">" + name + "=" + value);
  }
  bool on_response_header(const std::string& name, const std::string& value) override {
    return note("<" + name + "=" + value);
  }
  bool on_request_body(const std::string& body, std::uint32_t offset, std::uint32_t count,
                       std::uint32_t total) override {
    EXPECT_TRUE(Peer::received.ends_with("\r\n\r\n"));
    return note(replay::format("%s %u %u %u", body.c_str(), offset, count, total));
  }
  bool on_response_body(const std::string& body, std::uint32_t length, std::uint32_t piece,
                        std::int32_t total) override {
    capacity = body.capacity();
    return note(replay::format("%s %u %u %d", body.c_str(), length, piece, total));
  }

  std::string seen;
  std::size_t capacity = 0;

 private:
  bool note(const std::string& text) {
    seen += text + "; ";
    return --left_ != 0;
  }

  int left_;
};

TEST(Http, MonitorSeesEachStepInOrderAndMayEndAtEach) {
  const Peer peer;
  http::request request(Peer::url("/uri"));
  request.body = "hello";
  request.headers["content-length"] = "5";
  const auto perform = [&](Witness& witness) {
    Peer::answer("", 1);
    Peer::pieces = {"HTTP/1.1 100 Go on\r\nA: 1\r\n\r\nHTTP/1.1 200 OK\r\n",
                    "Content-Length: 4\r\n\r\nab", "cd"};
    return failureOf([&] { http::perform(request, witness, "POST"); });
  };
  Witness whole(0);
  EXPECT_EQ(perform(whole), "");
  EXPECT_EQ(whole.seen,
            "POST /uri after 0; >Connection=close; >content-length=5; >Host=127.0.0.1; "
            "hello 0 5 5; 100; <A=1; 200; <Content-Length=4; ab 2 2 4; abcd 4 2 4; ");
  EXPECT_EQ(Peer::received,
            "POST /uri HTTP/1.1\r\nConnection: close\r\ncontent-length: 5\r\n"
            "Host: 127.0.0.1\r\n\r\nhello");
  EXPECT_TRUE(Peer::calls.starts_with(
      "socket,2,1,0 connect,16 setsockopt,65535,4102,30000,4 send,77,0 send,5,0 recv,8192,0"))
      << Peer::calls;
  for (int last = 1; last <= 11; ++last) {
    Witness witness(last);
    EXPECT_EQ(perform(witness), "http.aborted[]") << last;
    EXPECT_TRUE(whole.seen.starts_with(witness.seen)) << witness.seen;
    EXPECT_TRUE(Peer::calls.ends_with("closesocket"));
  }
  Peer::answer("HTTP/1.1 200 OK\r\nContent-Length: 2147483647\r\n\r\nx", 99);
  EXPECT_EQ(failureOf([&] { http::get(request, whole); }), "http.closed[]");
  EXPECT_EQ(failureOf([&] { http::get(request); }), "http.closed[]") << "without a monitor";
  EXPECT_EQ(whole.capacity, 64U << 20U) << "no memory without bound for a length that is claimed";
}

}  // namespace
