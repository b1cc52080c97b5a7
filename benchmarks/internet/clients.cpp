#include "internet/clients.h"

#include <curl/curl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "internet/server.h"
#include "platform/sockets.h"
#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/transport.h"

namespace benchmark {
namespace {

using namespace replay::internet;

constexpr int smallRequests = 2000;

void require(bool isRight) {
  if (!isRight) std::abort();
}

std::string urlOf(std::uint16_t port, const char* path) {
  return "http://localhost:" + std::to_string(port) + path;
}

void ownLarge(std::uint16_t port, const char* path) {
  const environment started;
  require(http::get(http::request(urlOf(port, path))).body.size() == largeBody);
}

std::size_t append(const char* bytes, std::size_t size, std::size_t count, void* body) {
  static_cast<std::string*>(body)->append(bytes, size * count);
  return size * count;
}

void curlLarge(std::uint16_t port, const char* path) {
  curl_global_init(CURL_GLOBAL_NOTHING);
  std::string body;
  CURL* const handle = curl_easy_init();
  curl_easy_setopt(handle, CURLOPT_URL, urlOf(port, path).c_str());
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body);
  require(curl_easy_perform(handle) == CURLE_OK);
  curl_easy_cleanup(handle);
  require(body.size() == largeBody);
}

void ownSmall(std::uint16_t port) {
  const environment started;
  const std::string url = urlOf(port, "/small");
  for (int request = 0; request < smallRequests; ++request) {
    require(http::get(http::request(url)).body.size() == smallBody);
  }
}

std::string rawGet(std::uint16_t port) {
  addrinfo* list = nullptr;
  require(::getaddrinfo("localhost", nullptr, nullptr, &list) == 0);
  const addrinfo* entry = list;
  while (entry->ai_family != AF_INET) entry = entry->ai_next;
  sockaddr_in address{};
  std::memcpy(&address, entry->ai_addr, sizeof address);
  ::freeaddrinfo(list);
  address.sin_port = htons(port);
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  require(::connect(socket, generic, sizeof address) == 0);
  const std::string request = "GET /small HTTP/1.1\r\nConnection: close\r\nHost: localhost\r\n\r\n";
  require(::send(socket, request.data(), request.size(), MSG_NOSIGNAL) > 0);
  std::string reply;
  char buffer[8192];
  for (;;) {
    const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
    if (count <= 0) break;
    reply.append(buffer, static_cast<std::size_t>(count));
  }
  ::close(socket);
  return reply;
}

void rawSmall(std::uint16_t port) {
  for (int request = 0; request < smallRequests; ++request) {
    require(rawGet(port).size() > smallBody);
  }
}

// Some 5 million lines of 10 to 89 bytes, as a peer would send them.
constexpr int linePasses = 64;
constexpr int linesInPass = 80'000;

const std::string& lines() {
  static const std::string text = [] {
    std::string made;
    std::uint32_t state = 1;
    for (int line = 0; line < linesInPass; ++line) {
      state = state * 1664525 + 1013904223;
      made.append(10 + (state >> 16U) % 80, 'x').append("\r\n");
    }
    return made;
  }();
  return text;
}

std::size_t fed = 0;

int feed(platform::SocketHandle, char* bytes, int count, int) {
  const std::string& text = lines();
  if (fed == text.size() * linePasses) return 0;
  const std::size_t begin = fed % text.size();
  const std::size_t length = text.copy(bytes, static_cast<std::size_t>(count), begin);
  fed += length;
  return static_cast<int>(length);
}

void ownLines(std::uint16_t) {
  platform::sockets.recv = feed;
  transport::tcp::raw stream;
  std::string line;
  int count = 0;
  try {
    for (;; ++count) stream.read_line(line);
  } catch (const transport::tcp::base::connection_closed&) {
  }
  require(count == linesInPass * linePasses);
}

// As plain as it can be: no line is copied, and nothing but line feeds ends one.
void memchrLines(std::uint16_t) {
  platform::sockets.recv = feed;
  char buffer[2 * 8192];
  std::size_t kept = 0;
  int count = 0;
  for (;;) {
    const int received = platform::sockets.recv(0, buffer + kept, 8192, 0);
    if (received <= 0) break;
    const char* const end = buffer + kept + received;
    const char* begin = buffer;
    while (const void* const found =
               std::memchr(begin, '\n', static_cast<std::size_t>(end - begin))) {
      begin = static_cast<const char*>(found) + 1;
      ++count;
    }
    kept = static_cast<std::size_t>(end - begin);
    std::memmove(buffer, begin, kept);
  }
  require(count == linesInPass * linePasses);
}

}  // namespace

const Task tasks[4] = {
    {"200 MiB body", "libcurl into a std::string", false, 1.0,
     [](std::uint16_t port) { ownLarge(port, "/identity"); },
     [](std::uint16_t port) { curlLarge(port, "/identity"); }},
    {"200 MiB body in chunks of 16 KiB", "libcurl into a std::string", false, 1.5,
     [](std::uint16_t port) { ownLarge(port, "/chunked"); },
     [](std::uint16_t port) { curlLarge(port, "/chunked"); }},
    {"2,000 bodies of 1 KiB", "plain socket calls", true, 1.3, ownSmall, rawSmall},
    {"5 million lines", "memchr over the same bytes", false, 1 / 0.3, ownLines, memchrLines},
};

}  // namespace benchmark
