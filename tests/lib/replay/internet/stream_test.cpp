#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <regex>
#include <vector>

#include "lib/replay/internet/peer.h"
#include "replay/internet/transport.h"
#include "replay/text.h"
#include "support/rows.h"

namespace {

using namespace replay::internet::transport;
using replay::internet::environment;
using replay::internet::address::ip4;
using test::failureOf;
using test::Peer;

struct Stream : tcp::raw {
  Stream() {
    open(Peer::address());
    connect(Peer::address());
  }
};

TEST(Stream, WrittenLinesGatherUntilAFlushAndLeaveInOrder) {
  const Peer peer;
  Stream stream;
  stream.write_line("one", false);
  stream.write_line("", false);
  EXPECT_EQ(Peer::received, "");
  stream.write_line("two", true);
  stream.write("");
  EXPECT_EQ(Peer::calls, "socket,2,1,0 connect,16 send,12,0") << "nothing where nothing waits";
  Peer::largestSend = 3;
  stream.write_line("three", false);
  stream.write("!");
  EXPECT_EQ(Peer::received, "one\r\n\r\ntwo\r\nthree\r\n!");
  EXPECT_EQ(stream.sent(), 20U);
  Peer::largestSend = 0;
  EXPECT_EQ(failureOf([&] { stream.write("lost"); }),
            "internet.transport.connection_failed.connection_closed[send() failed]");
}

// A line counts once the byte behind its end is there.
std::vector<std::string> linesOf(const std::string& bytes) {
  static const std::regex end("\r\n|\n\r|\r|\n");
  std::vector<std::string> lines{std::sregex_token_iterator(bytes.begin(), bytes.end(), end, -1),
                                 {}};
  lines.pop_back();
  return lines;
}

std::vector<std::string> readLines() {
  Stream stream;
  std::vector<std::string> lines;
  for (std::string failure; failure.empty();) {
    std::string line;
    failure = failureOf([&] { stream.read_line(line); });
    lines.push_back(line + failure);
  }
  EXPECT_EQ(lines.back(), "internet.transport.connection_failed.connection_closed[recv() failed]");
  lines.pop_back();
  return lines;
}

TEST(Stream, LinesOfEachLengthAndEndDoNotDependOnWhereThePacketsEnd) {
  const Peer peer;
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    for (int at = 0; at < length; ++at) bytes += static_cast<char>(at * 7 + length);
    std::replace(bytes.end() - length, bytes.end(), '\r', '\0');
    std::replace(bytes.end() - length, bytes.end(), '\n', '\xff');
    // All texts of five of these bytes.
    for (int rest = length, count = 0; count < 5; ++count, rest /= 3) bytes += "a\r\n"[rest % 3];
  }
  for (const std::size_t size : {17U, 8192U, 99999U}) {
    for (const std::string last : {".", "\r", "\n"}) {
      Peer::answer(bytes + last, size);
      EXPECT_EQ(readLines(), linesOf(bytes + last)) << size;
    }
  }
}

TEST(Stream, AQueueIsEmptyOnceItsBytesWereMovedAndTellsARoomThatIsTooLarge) {
  replay::internet::byte_queue from;
  from.append("abc");
  replay::internet::byte_queue to = std::move(from);
  from.append("d");  // NOLINT(bugprone-use-after-move): on purpose
  EXPECT_EQ(to.view(), "abc");
  EXPECT_EQ(from.view(), "d");
  EXPECT_THROW(to.prepare(SIZE_MAX - 1), std::bad_alloc);
  to = std::move(from);
  EXPECT_EQ(to.view(), "d");
}

TEST(Stream, ReadTakesWhatIsQueuedAndEndsWithTheTimeOutEachTime) {
  const Peer peer;
  Peer::answer("abcdefgh\n", 4, Peer::silence);
  Stream stream;
  stream.set_receive_timeout();
  const std::string silence =
      "internet.transport.connection_failed.connection_timed_out[recv() failed]";
  std::string seen;
  for (const std::size_t maximum : {10U, 3U, 9U, 9U, 9U, 9U}) {
    std::string text = "-";
    const std::string failure = failureOf([&] { stream.read(maximum, text); });
    seen += text + failure + "|";
  }
  EXPECT_EQ(seen, "abcd|efg|h|\n|-" + silence + "|-" + silence + "|");
  EXPECT_EQ(stream.received(), 9U);
}

int error = 0;  // the number that calls fail with

int fail() {
  platform::sockets.WSASetLastError(error);
  return -1;
}

TEST(Failures, EachErrorOfEachCallIsRaisedAsItsClass) {
  const test::Tables tables;
  platform::SocketsApi& api = platform::sockets;
  api.WSAStartup = [](std::uint16_t version, auto*) { return version == 0x0101 ? error : 1; };
  api.WSACleanup = fail;
  // Sockets for streams can be opened, those for datagrams cannot.
  api.socket = [](int, int type, int) { return type == 1 ? 7 : platform::SocketHandle(fail()); };
  api.connect = [](platform::SocketHandle, const void*, int) { return fail(); };
  api.recv = [](platform::SocketHandle, char*, int, int) { return fail(); };
  api.send = [](platform::SocketHandle, const char*, int, int) { return fail(); };
  api.closesocket = [](platform::SocketHandle) { return fail(); };
  api.setsockopt = [](platform::SocketHandle, int, int, const char*, int) { return fail(); };
  environment started;
  tcp::raw stream;
  const std::map<std::string, std::function<void()>> calls = {
      {"WSAStartup", [] { const environment failing; }},
      {"WSACleanup", [&] { started.stop(); }},
      {"socket", [] { udp::raw().open(ip4()); }},
      {"connect", [&] { stream.connect(ip4()); }},
      {"recv", [&] { stream.fill(); }},
      {"send", [&] { stream.send_all("x", 1); }},
      {"setsockopt", [&] { stream.set_receive_timeout(); }},
      {"closesocket", [&] { stream.close(); }},
  };
  for (const test::TextRow& row : test::rowsOf("lib/replay/internet/failures.txt", 3)) {
    for (const std::string& call : replay::split(row.fields[1], ",")) {
      stream.open(ip4());
      error = std::stoi(row.fields[0]);
      std::string expected = row.fields[2];
      if (expected.find('[') == std::string::npos) expected += "[" + call + "() failed]";
      EXPECT_EQ(failureOf(calls.at(call)), expected == "[]" ? "" : expected) << row.where << call;
    }
  }
}

}  // namespace
