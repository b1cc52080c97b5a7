#include "internet/server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace benchmark {
namespace {

bool sendAll(int socket, const std::string& bytes) {
  for (std::size_t begin = 0; begin < bytes.size();) {
    const ssize_t count = ::send(socket, bytes.data() + begin, bytes.size() - begin, MSG_NOSIGNAL);
    if (count <= 0) return false;
    begin += static_cast<std::size_t>(count);
  }
  return true;
}

std::string requestOf(int socket) {
  std::string request;
  char buffer[4096];
  while (request.find("\r\n\r\n") == std::string::npos) {
    const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
    if (count <= 0) break;
    request.append(buffer, static_cast<std::size_t>(count));
  }
  return request;
}

void sendLarge(int socket, bool isChunked) {
  const std::string head = "HTTP/1.1 200 OK\r\nConnection: close\r\n";
  sendAll(socket, head +
                      (isChunked ? std::string("Transfer-Encoding: chunked")
                                 : "Content-Length: " + std::to_string(largeBody)) +
                      "\r\n\r\n");
  // Sixteen chunks for each send, so that the server is not what is measured.
  std::string piece;
  for (int chunk = 0; chunk < 16; ++chunk) {
    if (isChunked) piece += "4000\r\n";
    piece += std::string(chunkSize, 'x');
    if (isChunked) piece += "\r\n";
  }
  for (std::size_t sent = 0; sent < largeBody; sent += 16 * chunkSize) {
    if (!sendAll(socket, piece)) return;
  }
  if (isChunked) sendAll(socket, "0\r\n\r\n");
}

void answer(int socket) {
  const std::string request = requestOf(socket);
  if (request.starts_with("GET /small")) {
    static const std::string reply =
        "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(smallBody) +
        "\r\n\r\n" + std::string(smallBody, 'x');
    sendAll(socket, reply);
  } else {
    sendLarge(socket, request.starts_with("GET /chunked"));
  }
  ::close(socket);
}

}  // namespace

Server::Server() {
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  socklen_t length = sizeof address;
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener, generic, length) != 0 || ::listen(listener, 128) != 0) std::abort();
  ::getsockname(listener, generic, &length);
  port_ = ntohs(address.sin_port);
  process_ = ::fork();
  if (process_ != 0) {
    ::close(listener);
    return;
  }
  for (;;) answer(::accept(listener, nullptr, nullptr));
}

Server::~Server() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

}  // namespace benchmark
