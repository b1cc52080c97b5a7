#include "replay/internet/http.h"

#include <gtest/gtest.h>

#include <array>

#include "internet/script.h"
#include "replay/internet/environment.h"

namespace {

using namespace replay::internet;
using test::failureOf;
using test::Script;

std::string resolvedHost;

TEST(Request, AddressTextFallsIntoHostPortAndPath) {
  const test::Tables tables;
  const environment started;
  test::Tables::emulateLookups();
  platform::sockets.gethostbyname = [](const char* name) {
    static std::array<char, 4> address = {127, 0, 0, 9};
    static std::array<char*, 2> addresses = {address.data(), nullptr};
    static platform::hostent answer{address.data(), nullptr, 2, 4, addresses.data()};
    resolvedHost = name;
    return &answer;
  };
  const struct {
    const char* text;
    const char* host;
    int port;
    const char* uri;
  } rows[] = {
      {"http://Server1:8080/a b#c", "server1", 8080, "/a%20b"},
      {"server1", "server1", 80, "/"},
      {"HTTP://Server1/Path/", "server1", 80, "/Path/"},
      {"https://Server1/x", "https", 0, "//Server1/x"},
      {"http://http://x/", "http", 0, "//x/"},
      {"server1:65617/", "server1", 81, "/"},
      {"server1:8x/y:9/z", "server1", 8, "/y:9/z"},
      {"server1:/y", "server1", 0, "/y"},
      {"server1:81?a=b", "server1", 81, "/"},
      {"server1?a=b", "server1?a=b", 80, "/"},
      {"server1#a", "server1#a", 80, "/"},
      {"server1/#a/b", "server1", 80, "/"},
      {"server1/\x7f\t?q=\xe9&r=%20", "server1", 80, "/\x7f%09?q=%c3%a9&r=%20"},
  };
  for (const auto& row : rows) {
    const http::request request(row.text);
    EXPECT_EQ(resolvedHost, row.host) << row.text;
    EXPECT_EQ(request.address.port(), row.port) << row.text;
    EXPECT_EQ(request.uri, row.uri) << row.text;
    const http::header_map headers = {{"connection", "close"}, {"HOST", row.host}};
    EXPECT_TRUE(
        std::equal(headers.begin(), headers.end(), request.headers.begin(), request.headers.end(),
                   [](const auto& left, const auto& right) {
                     return replay::iequals(left.first, right.first) && left.second == right.second;
                   }))
        << row.text;
  }
}

const http::request& localRequest() {
  static const http::request request = [] {
    const environment started;
    return http::request("http://127.0.0.1/uri");
  }();
  return request;
}

// Status, headers and body of the reply, or what failed.
std::string outcome() {
  std::string text;
  const std::string failure = failureOf([&] {
    const http::response reply = http::get(localRequest());
    text = std::to_string(reply.status);
    for (const auto& [name, value] : reply.headers)
      text.append(" ").append(name).append("=").append(value);
    text += "|" + reply.body;
  });
  return failure.empty() ? text : failure;
}

TEST(Reply, FramingDoesNotDependOnWhereThePacketsEnd) {
  const struct {
    const char* bytes;
    const char* outcome;
    int ending = 0;
  } rows[] = {
      // The status line.
      {"\r\n\n\nHTTP/1.0 404 Not Found\r\n\r\nbody", "404|body"},
      {"HTTP/1 7x\n\nbody", "7|body"},
      {"HTTP/2 200\n\nbody", "http.invalid_response[HTTP/2 200]"},
      {"<html>\r\n\r\n", "http.invalid_response[<html>]"},
      {"HTTP/1.1   \r\n\r\n", "http.invalid_response[HTTP/1.1   ]"},
      {"HTTP/1.1 100 Continue\r\nA: 1\r\n\r\nHTTP/1.1 200 OK\r\nB: 2\r\n\r\n", "200 B=2|"},
      {"HTTP/1.1 100 Continue\r\n\r\n", "http.closed[]"},
      // Headers.
      {"HTTP/1.1 200 OK\r\nA: 1\r\nB:::  2 : 3 \r\na:4\r\n\r\nx", "200 A=4 B=2 : 3 |x"},
      {"HTTP/1.1 200 OK\r\nA: 1\r\nB:\r\nC: 3\r\n\r\n", "200 A=1|C: 3\r\n\r\n"},
      {"HTTP/1.1 200 OK\r\nA: : :\r\n\r\nx", "200|\r\nx"},
      {"HTTP/1.1 200 OK\r\nno colon\r\nx", "200|x"},
      {"HTTP/1.1 200 OK\r\n: 1\r\n\r\n", "200 =1|"},
      {"HTTP/1.1 200 OK\r\nA: 1\r\n\r", "http.closed[]"},
      // Bodies to the end of the connection.
      {"HTTP/1.1 200 OK\r\n\r\ncut", "200|cut", 10054},
      {"HTTP/1.1 200 OK\r\n\r\ncut", "200|cut", 10060},
      {"HTTP/1.1 200 OK\r\n\r\ncut", "internet.transport.not_a_socket[recv() failed]", 10038},
      {"HTTP/1.1 200 OK\r\n\r\ncut", "internet.environment.subsystem_not_ready[recv() failed]",
       10050},
      {"HTTP/1.1 200 OK\r\ncontent-length: 5\r\n\r\n123", "http.closed[]"},
      {"HTTP/1.1 200 OK\r\ncontent-length: 5\r\n\r\n12345", "200 content-length=5|12345"},
      {"HTTP/1.1 200 OK\r\ncontent-length: 5\r\n\r\n1234567", "http.closed[]"},
      {"HTTP/1.1 200 OK\r\ncontent-length: 0\r\n\r\n123", "200 content-length=0|123"},
      {"HTTP/1.1 200 OK\r\ncontent-length: -3\r\n\r\n123", "http.closed[]"},
      {"HTTP/1.1 200 OK\r\ncontent-length: 99999\r\n\r\n123", "http.closed[]"},
      // Bodies in chunks.
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip\r\n\r\n",
       "http.invalid_response[unsupported transfer-encoding]"},
      {"HTTP/1.1 200 OK\r\ntransfer-encoding: CHUNKED\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n",
       "200 transfer-encoding=CHUNKED|abcde"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nA;n\r\n0123456789\r\n\r\n1\r\n\n0\r\n",
       "200 Transfer-Encoding=chunked|0123456789\n"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: "
       "chunked\r\n\r\n1;a\r\n0123456789012345678901234567\r\n",
       "http.closed[]"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nnot\r\n",
       "200 Transfer-Encoding=chunked|"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n", "http.closed[]"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n0\r", "http.closed[]"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nContent-Length: 9\r\n\r\n1\r\na\r\n0\r\n",
       "200 Content-Length=9 Transfer-Encoding=chunked|a"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\nabc",
       "http.closed[]", 10053},
  };
  const Script script;
  for (const auto& row : rows) {
    const std::string bytes = row.bytes;
    Script::reset();
    Script::ending = row.ending;
    Script::deliver(bytes, 1);
    ASSERT_EQ(outcome(), row.outcome) << "byte by byte: " << bytes;
    for (std::size_t split = 1; split <= bytes.size(); ++split) {
      Script::pieces = {bytes.substr(0, split)};
      if (split != bytes.size()) Script::pieces.push_back(bytes.substr(split));
      ASSERT_EQ(outcome(), row.outcome) << "split at " << split << ": " << bytes;
    }
    EXPECT_TRUE(Script::calls.ends_with("closesocket"));
  }
}

TEST(Reply, LengthThatAServerClaimsReservesNoMemoryWithoutBound) {
  struct Capacity : http::monitor_type {
    bool on_response_body(const std::string& body, std::uint32_t, std::uint32_t,
                          std::int32_t) override {
      capacity = body.capacity();
      return true;
    }
    std::size_t capacity = 0;
  };
  const struct {
    const char* length;
    std::size_t least, most;
  } rows[] = {{"2147483647", 1, 65U << 20U}, {"-2147483648", 1, 100}, {"100000", 100000, 200000}};
  const Script script;
  for (const auto& row : rows) {
    Script::pieces = {std::string("HTTP/1.1 200 OK\r\nContent-Length: ") + row.length +
                      "\r\n\r\nx"};
    Capacity monitor;
    EXPECT_EQ(failureOf([&] { http::get(localRequest(), monitor); }), "http.closed[]");
    EXPECT_GE(monitor.capacity, row.least) << row.length;
    EXPECT_LE(monitor.capacity, row.most) << row.length;
  }
}

// Writes down what it is told, and says no at one of the calls.
class Witness : public http::monitor_type {
 public:
  explicit Witness(int last) : left_(last) {}

  bool on_request(const std::string& method, const std::string& uri) override {
    return note(method + " " + uri + " after " + std::to_string(Script::sent.size()));
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
    EXPECT_TRUE(Script::sent.ends_with("\r\n\r\n"));
    return note(replay::format("%s %u %u %u", body.c_str(), offset, count, total));
  }
  bool on_response_body(const std::string& body, std::uint32_t length, std::uint32_t piece,
                        std::int32_t total) override {
    return note(replay::format("%s %u %u %d", body.c_str(), length, piece, total));
  }

  std::string seen;

 private:
  bool note(const std::string& text) {
    seen += text + "; ";
    return --left_ != 0;
  }

  int left_;
};

TEST(Monitor, SeesEachStepInOrderAndMayEndAtEach) {
  const Script script;
  http::request request = localRequest();
  request.body = "hello";
  request.headers["content-length"] = "5";
  const auto perform = [&](Witness& witness) {
    Script::reset();
    Script::pieces = {"HTTP/1.1 100 Go on\r\nA: 1\r\n\r\nHTTP/1.1 200 OK\r\n",
                      "Content-Length: 4\r\n\r\nab", "cd"};
    return failureOf([&] { http::perform(request, witness, "POST"); });
  };
  Witness whole(0);
  EXPECT_EQ(perform(whole), "");
  EXPECT_EQ(whole.seen,
            "POST /uri after 0; >Connection=close; >content-length=5; >Host=127.0.0.1; "
            "hello 0 5 5; 100; <A=1; 200; <Content-Length=4; ab 2 2 4; abcd 4 2 4; ");
  EXPECT_EQ(Script::sent,
            "POST /uri HTTP/1.1\r\nConnection: close\r\ncontent-length: 5\r\n"
            "Host: 127.0.0.1\r\n\r\nhello");
  EXPECT_TRUE(Script::calls.starts_with(
      "socket,2,1,0 connect,16 setsockopt,65535,4102,30000,4 send,77,0 send,5,0 recv"))
      << Script::calls;
  for (int last = 1; last <= 11; ++last) {
    Witness witness(last);
    EXPECT_EQ(perform(witness), "http.aborted[]") << last;
    EXPECT_TRUE(whole.seen.starts_with(witness.seen)) << witness.seen;
    EXPECT_TRUE(Script::calls.ends_with("closesocket"));
  }
}

TEST(Failure, WhatBreaksTheConnectionIsClosedAndTheRestComesAsItIs) {
  const Script script;
  platform::sockets.connect = [](platform::SocketHandle, const void*, int) { return -1; };
  const struct {
    int error;
    const char* failure;
  } rows[] = {
      {10061, "http.closed[]"},
      {10060, "http.closed[]"},
      {10051, "http.closed[]"},
      {10048, "internet.transport.address_in_use[connect() failed]"},
      {10035, "internet.transport[connect() returned status 0x00002733]"},
      {10093, "internet.environment.subsystem_failed[connect() failed]"},
  };
  for (const auto& row : rows) {
    Script::ending = row.error;
    EXPECT_EQ(outcome(), row.failure);
  }
}

}  // namespace
