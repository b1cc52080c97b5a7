#include "replay/internet/transport.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "internet/script.h"

namespace {

using namespace replay::internet::transport;
using replay::internet::address::ip4;
using test::failureOf;
using test::Script;

// A row of failures: the class that each operation raises, without "internet." in front of it. A
// named class says "<operation>() failed" and transport itself "<operation>() returned status" and
// the number; what differs from that is written in full.
struct FailureRow {
  int error;
  const char* number;
  const char* classes[6];  // socket, connect, recv, send, closesocket, setsockopt
};

constexpr const char* generic_ = "transport";
constexpr const char* interrupted = "transport.operation_interrupted";
constexpr const char* noSocket = "transport.not_a_socket";
constexpr const char* failed = "transport.connection_failed";
constexpr const char* aborted = "transport.connection_failed.connection_aborted";
constexpr const char* closed = "transport.connection_failed.connection_closed";
constexpr const char* refused = "transport.connection_failed.connection_refused";
constexpr const char* reset = "transport.connection_failed.connection_reset";
constexpr const char* timedOut = "transport.connection_failed.connection_timed_out";
constexpr const char* noNetwork = "transport.connection_failed.network_unreachable";
constexpr const char* noHost = "transport.connection_failed.host_unreachable";
constexpr const char* notReady = "environment.subsystem_not_ready";
constexpr const char* down = "environment.subsystem_failed";
constexpr const char* inUse = "transport.address_in_use";
constexpr const char* notValid = "transport.address_not_valid";
constexpr const char* abortedSend =
    "internet.transport.connection_failed.connection_aborted[recv() failed]";

// clang-format off
const FailureRow failureRows[] = {
    {10004, "0x00002714", {generic_, interrupted, interrupted, interrupted, generic_, generic_}},
    {10038, "0x00002736", {generic_, noSocket,    noSocket,    noSocket,    "",       noSocket}},
    {10048, "0x00002740", {generic_, inUse,       generic_,    generic_,    generic_, generic_}},
    {10049, "0x00002741", {generic_, notValid,    generic_,    generic_,    generic_, generic_}},
    {10050, "0x00002742", {notReady, notReady,    notReady,    notReady,    notReady, notReady}},
    {10051, "0x00002743", {generic_, noNetwork,   generic_,    generic_,    generic_, generic_}},
    {10052, "0x00002744", {generic_, generic_,    reset,       reset,       generic_, generic_}},
    {10053, "0x00002745", {generic_, generic_,    aborted,     abortedSend, generic_, generic_}},
    {10054, "0x00002746", {generic_, generic_,    reset,       reset,       generic_, generic_}},
    {10057, "0x00002749", {generic_, generic_,    failed,      failed,      generic_, generic_}},
    {10058, "0x0000274a", {generic_, generic_,    closed,      closed,      generic_, generic_}},
    {10060, "0x0000274c", {generic_, noHost,      timedOut,    timedOut,    generic_, generic_}},
    {10061, "0x0000274d", {generic_, refused,     generic_,    generic_,    generic_, generic_}},
    {10065, "0x00002751", {generic_, noHost,      generic_,    generic_,    generic_, generic_}},
    {10093, "0x0000276d", {down,     down,        down,        down,        down,     down}},
    {10035, "0x00002733", {generic_, generic_,    generic_,    generic_,    generic_, generic_}},
    {-1,    "0xffffffff", {generic_, generic_,    generic_,    generic_,    generic_, generic_}},
};
// clang-format on

TEST(TransportFailure, EachErrorOfEachOperationHasItsClassAndMessage) {
  const char* const names[] = {"socket", "connect", "recv", "send", "closesocket", "setsockopt"};
  for (const FailureRow& row : failureRows) {
    const Script script;
    Script::ending = row.error;
    tcp::raw stream;
    stream.open(ip4());
    platform::SocketsApi& api = platform::sockets;
    api.socket = [](int, int, int) { return platform::noSocket; };
    api.connect = [](platform::SocketHandle, const void*, int) { return -1; };
    api.send = [](platform::SocketHandle, const char*, int, int) { return -1; };
    api.closesocket = [](platform::SocketHandle) { return -1; };
    api.setsockopt = [](platform::SocketHandle, int, int, const char*, int) { return -1; };
    const std::function<void()> operations[] = {
        [] { tcp::raw().open(ip4()); }, [&] { stream.connect(ip4()); },
        [&] { stream.fill(); },         [&] { stream.send_all("x", 1); },
        [&] { stream.close(); },        [&] { stream.set_receive_timeout(); }};
    for (std::size_t column = 0; column < 6; ++column) {
      // Closing comes last: afterwards the object has no socket.
      const std::size_t call = column < 4 ? column : 9 - column;
      std::string expected = row.classes[call];
      if (expected == generic_) {
        expected = std::string("internet.transport[") + names[call] + "() returned status " +
                   row.number + "]";
      } else if (!expected.empty() && expected.back() != ']') {
        expected = "internet." + expected + "[" + names[call] + "() failed]";
      }
      EXPECT_EQ(failureOf(operations[call]), expected) << row.error << " " << names[call];
    }
    EXPECT_EQ(failureOf([&] { stream.close(); }), "") << "there is no socket any more";
    EXPECT_EQ(failureOf([] { udp::raw().open(ip4()); }), failureOf([] { tcp::raw().open(ip4()); }));
  }
}

TEST(Transport, OperationsHandTheirArgumentsToTheSystem) {
  const Script script;
  {
    tcp::raw stream;
    stream.open(ip4());
    stream.connect(ip4());
    stream.set_receive_timeout();
    udp::raw datagrams;
    datagrams.open(ip4());
    datagrams.close();
    datagrams.close();
  }
  EXPECT_EQ(Script::calls,
            "socket,2,1,0 connect,16 setsockopt,65535,4102,30000,4 socket,2,2,0 closesocket "
            "closesocket");
}

TEST(Transport, CloseThatFailsIsSeenOnceAndNotFromTheDestructor) {
  const Script script;
  Script::ending = 10004;
  platform::sockets.closesocket = [](platform::SocketHandle) { return -1; };
  {
    tcp::raw dropped;
    dropped.open(ip4());
  }
  tcp::raw stream;
  stream.open(ip4());
  EXPECT_NE(failureOf([&] { stream.close(); }), "");
  EXPECT_EQ(failureOf([&] { stream.close(); }), "");
}

TEST(Writing, LinesGatherUntilAFlushAndLeaveInOrder) {
  const Script script;
  tcp::raw stream;
  stream.write_line("one", false);
  stream.write_line("", false);
  EXPECT_EQ(Script::sent, "");
  stream.write_line("two", true);
  EXPECT_EQ(Script::calls, "send,12,0") << "all in one";
  stream.flush();
  stream.write("");
  EXPECT_EQ(Script::calls, "send,12,0") << "nothing waits";
  Script::largestSend = 3;
  stream.write_line("three", false);
  stream.write("!");
  EXPECT_EQ(Script::sent, "one\r\n\r\ntwo\r\nthree\r\n!");
  EXPECT_EQ(stream.sent(), 20U);
}

TEST(Writing, FailedFlushIsNotRepeated) {
  const Script script;
  tcp::raw stream;
  Script::largestSend = 0;
  EXPECT_EQ(failureOf([&] { stream.write("lost"); }),
            "internet.transport.connection_failed.connection_closed[send() failed]");
  Script::largestSend = 99;
  stream.write("kept");
  EXPECT_EQ(Script::sent, "kept");
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
  tcp::raw stream;
  std::vector<std::string> lines;
  std::string line;
  const std::string failure = failureOf([&] {
    for (;;) {
      stream.read_line(line);
      lines.push_back(line);
    }
  });
  EXPECT_EQ(failure, "internet.transport.connection_failed.connection_closed[recv() failed]");
  return lines;
}

TEST(ReadLine, LinesDoNotDependOnWhereThePacketsEnd) {
  const Script script;
  // All texts of six of these bytes.
  const std::string alphabet = "a\r\n";
  for (int number = 0; number < 729; ++number) {
    std::string bytes;
    for (int rest = number, at = 0; at < 6; ++at, rest /= 3) {
      bytes += alphabet[static_cast<std::size_t>(rest % 3)];
    }
    for (const std::size_t size : {1U, 2U, 5U, 6U}) {
      Script::deliver(bytes, size);
      EXPECT_EQ(readLines(), linesOf(bytes)) << number << " in pieces of " << size;
    }
  }
}

TEST(ReadLine, LinesOfEachLengthAndByteComeOutWhole) {
  const Script script;
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    for (int at = 0; at < length; ++at) bytes += static_cast<char>(at * 7 + length);
    std::replace(bytes.end() - length, bytes.end(), '\r', '\0');
    std::replace(bytes.end() - length, bytes.end(), '\n', '\xff');
    bytes += length % 3 == 0 ? "\r\n" : length % 3 == 1 ? "\n" : "\r";
  }
  for (const std::size_t size : {1U, 17U, 8192U, 99999U}) {
    Script::deliver(bytes + ".", size);
    EXPECT_EQ(readLines(), linesOf(bytes + ".")) << size;
  }
}

TEST(ReadLine, PeerThatClosesBehindTheLineLeavesNothing) {
  const Script script;
  tcp::raw stream;
  Script::deliver("abc\n", 4);
  std::string text = "before";
  EXPECT_NE(failureOf([&] { stream.read_line(text); }), "");
  EXPECT_EQ(text, "");
  Script::deliver("def", 3);
  stream.read_some(text);
  EXPECT_EQ(text, "def") << "the line is still queued";
  EXPECT_EQ(stream.received(), 7U);
}

TEST(Read, TakesWhatIsQueuedBeforeItWaits) {
  const Script script;
  tcp::raw stream;
  std::string text = "before";
  Script::deliver("abcdefgh", 4);
  stream.read(10, text);
  EXPECT_EQ(text, "abcd") << "a short read is no failure";
  stream.read(3, text);
  EXPECT_EQ(text, "efg");
  stream.read_some(text);
  EXPECT_EQ(text, "h");
  EXPECT_EQ(Script::calls, "recv,8192,0 recv,8192,0");
  Script::ending = 10060;
  EXPECT_EQ(failureOf([&] { stream.read_some(text); }),
            "internet.transport.connection_failed.connection_timed_out[recv() failed]");
  EXPECT_EQ(text, "h");
}

}  // namespace
