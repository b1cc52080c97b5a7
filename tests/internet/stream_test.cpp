#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "internet/peer.h"
#include "replay/internet/transport.h"

namespace {

using namespace replay::internet::transport;
using test::failureOf;
using test::Peer;

constexpr const char* closed =
    "internet.transport.connection_failed.connection_closed[recv() failed]";

class Stream : public tcp::raw {
 public:
  Stream() {
    open(Peer::address());
    connect(Peer::address());
  }

  using raw::socket;

  std::string readLine() {
    std::string line;
    const std::string failure = failureOf([&] { read_line(line); });
    return line + failure;
  }

  std::string readSome(std::size_t maximum = std::string::npos) {
    std::string text = "before";
    const std::string failure = failureOf([&] { read(maximum, text); });
    return failure.empty() ? text : failure;
  }
};

TEST(Stream, WrittenLinesGatherUntilAFlushAndLeaveInOrder) {
  const Peer peer;
  Stream stream;
  Peer::calls.clear();
  stream.write_line("one", false);
  stream.write_line("", false);
  EXPECT_EQ(Peer::received, "");
  stream.write_line("two", true);
  stream.flush();
  stream.write("");
  EXPECT_EQ(Peer::calls, "send,12,0") << "all in one, and nothing where nothing waits";
  Peer::largestSend = 3;
  stream.write_line("three", false);
  stream.write("!");
  EXPECT_EQ(Peer::received, "one\r\n\r\ntwo\r\nthree\r\n!");
  EXPECT_EQ(stream.sent(), 20U);
  Peer::largestSend = 0;
  EXPECT_EQ(failureOf([&] { stream.write("lost"); }),
            "internet.transport.connection_failed.connection_closed[send() failed]");
  Peer::largestSend = 99;
  stream.write("kept");
  EXPECT_TRUE(Peer::received.ends_with("!kept")) << "a flush that failed is not repeated";
}

// The lines of `bytes` as the slowest reader would find them: a line counts once the byte behind
// its end is there.
std::vector<std::string> linesOf(const std::string& bytes) {
  std::vector<std::string> lines(1);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (bytes[at] != '\r' && bytes[at] != '\n') {
      lines.back() += bytes[at];
      continue;
    }
    if (at + 1 == bytes.size()) break;
    const char next = bytes[at + 1];
    if ((next == '\r' || next == '\n') && next != bytes[at]) ++at;
    lines.emplace_back();
  }
  lines.pop_back();
  return lines;
}

std::vector<std::string> readLines() {
  Stream stream;
  std::vector<std::string> lines = {stream.readLine()};
  while (!lines.back().ends_with("]")) lines.push_back(stream.readLine());
  EXPECT_EQ(lines.back(), closed) << "and an empty line";
  lines.pop_back();
  return lines;
}

TEST(Stream, LinesDoNotDependOnWhereThePacketsEnd) {
  const Peer peer;
  // All texts of five of these bytes.
  const std::string alphabet = "a\r\n";
  for (int number = 0; number < 243; ++number) {
    std::string bytes;
    for (int rest = number, at = 0; at < 5; ++at, rest /= 3) {
      bytes += alphabet[static_cast<std::size_t>(rest % 3)];
    }
    for (const std::size_t size : {1U, 2U, 5U}) {
      Peer::answer(bytes, size);
      EXPECT_EQ(readLines(), linesOf(bytes)) << number << " in pieces of " << size;
    }
  }
}

TEST(Stream, LinesOfEachLengthAndByteComeOutWhole) {
  const Peer peer;
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    for (int at = 0; at < length; ++at) bytes += static_cast<char>(at * 7 + length);
    std::replace(bytes.end() - length, bytes.end(), '\r', '\0');
    std::replace(bytes.end() - length, bytes.end(), '\n', '\xff');
    std::replace(bytes.end() - length, bytes.end(), ']', '[');
    bytes += length % 3 == 0 ? "\r\n" : length % 3 == 1 ? "\n" : "\r";
  }
  for (const std::size_t size : {17U, 8192U, 99999U}) {
    Peer::answer(bytes + ".", size);
    EXPECT_EQ(readLines(), linesOf(bytes + ".")) << size;
  }
}

TEST(Stream, ReadTakesWhatIsQueuedBeforeItWaits) {
  const Peer peer;
  Peer::answer("abcdefghx\n", 4);
  Stream stream;
  Peer::calls.clear();
  EXPECT_EQ(stream.readSome(10), "abcd") << "a short read is no failure";
  EXPECT_EQ(stream.readSome(3), "efg");
  EXPECT_EQ(stream.readSome(), "h");
  EXPECT_EQ(Peer::calls, "recv,8192,0 recv,8192,0");
  EXPECT_EQ(stream.readLine(), closed) << "the line is not there before the byte behind it";
  EXPECT_EQ(stream.received(), 10U);
}

TEST(Stream, SilenceEndsWithTheTimeOutEachTime) {
  const Peer peer;
  Peer::answer("", 1, Peer::silence);
  Stream stream;
  stream.set_receive_timeout();
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(stream.readSome(),
              "internet.transport.connection_failed.connection_timed_out[recv() failed]");
  }
}

TEST(Stream, RefusedConnectionIsToldAsSuch) {
  const Peer refusing(false);
  EXPECT_EQ(failureOf([] { const Stream stream; }),
            "internet.transport.connection_failed.connection_refused[connect() failed]");
}

TEST(Stream, SocketIsClosedOnceWhoeverClosesIt) {
  const Peer peer;
  {
    udp::raw datagrams;
    datagrams.open(Peer::address());
    datagrams.close();
    datagrams.close();
    Stream stream;
  }
  EXPECT_EQ(Peer::calls, "socket,2,2,0 closesocket socket,2,1,0 connect,16 closesocket");
  Stream unknown;
  EXPECT_EQ(platform::sockets.closesocket(unknown.socket()), 0);
  EXPECT_EQ(failureOf([&] { unknown.close(); }), "") << "a handle that the system does not know";
}

}  // namespace
