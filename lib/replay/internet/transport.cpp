#include "replay/internet/transport.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/sockets.h"
#include "replay/internet/detail/line_end.h"
#include "replay/internet/detail/transport_failure.h"

namespace replay::internet::transport {
namespace {

constexpr int failed = -1;
constexpr std::uint32_t receive_timeout = 30'000;  // milliseconds
constexpr std::size_t receive_size = 8192;
constexpr std::size_t largest_count = std::numeric_limits<int>::max();

}  // namespace

base::~base() {
  try {
    close();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a failed close is never seen
  }
}

void base::open_socket(const address::base& address, int type) {
  std::uint16_t family = 0;
  std::memcpy(&family, address.data(), sizeof family);
  socket_ = platform::sockets.socket(family, type, 0);
  if (socket_ == platform::noSocket) raise_last_error(operation::socket);
}

void base::close() {
  if (socket_ == platform::noSocket) return;
  const int result = platform::sockets.closesocket(std::exchange(socket_, platform::noSocket));
  if (result == failed) raise_last_error(operation::closesocket);
}

std::size_t base::receive(char* buffer, std::size_t size) {
  const auto room = static_cast<int>(std::min(size, largest_count));
  const int count = platform::sockets.recv(socket_, buffer, room, 0);
  if (count == failed) raise_last_error(operation::recv);
  if (count <= 0) throw tcp::base::connection_closed("recv() failed");
  received_ += static_cast<std::uint32_t>(count);
  return static_cast<std::size_t>(count);
}

void base::send_all(const char* buffer, std::size_t size) {
  while (size != 0) {
    const auto part = static_cast<int>(std::min(size, largest_count));
    const int count = platform::sockets.send(socket_, buffer, part, 0);
    if (count == failed) raise_last_error(operation::send);
    if (count <= 0) throw tcp::base::connection_closed("send() failed");
    sent_ += static_cast<std::uint32_t>(count);
    buffer += count;
    size -= static_cast<std::size_t>(count);
  }
}

void base::set_receive_timeout() {
  char value[sizeof receive_timeout];
  std::memcpy(value, &receive_timeout, sizeof value);
  const int result = platform::sockets.setsockopt(
      socket_, platform::levelSocket, platform::optionReceiveTimeout, value, sizeof value);
  if (result == failed) raise_last_error(operation::setsockopt);
}

namespace tcp {

void base::open(const address::base& address) { open_socket(address, platform::typeStream); }

void base::connect(const address::base& address) {
  const int result =
      platform::sockets.connect(socket(), address.data(), static_cast<int>(address.size()));
  if (result == failed) raise_last_error(operation::connect);
}

void base::read_line(std::string& line) {
  std::size_t end = find_line_end(read_queue_.view(), 0);
  while (end == read_queue_.size()) {
    fill();
    end = find_line_end(read_queue_.view(), end);
  }
  const std::string_view received = read_queue_.view();
  const char terminator = received[end];
  line.assign(received.data(), end);
  read_queue_.remove(end + 1);
  if (read_queue_.empty()) {
    try {
      fill();
    } catch (...) {
      line.clear();
      throw;
    }
  }
  const char next = read_queue_.view().front();
  if (is_line_end(next) && next != terminator) read_queue_.remove(1);
}

std::string_view base::waiting(std::size_t maximum) {
  if (read_queue_.empty()) fill();
  return read_queue_.view().substr(0, maximum);
}

void base::read(std::size_t maximum, std::string& bytes) {
  bytes.assign(waiting(maximum));
  read_queue_.remove(bytes.size());
}

void base::read_some(std::string& bytes) { read(std::string::npos, bytes); }

std::size_t base::append(std::size_t maximum, std::string& bytes) {
  const std::string_view taken = waiting(maximum);
  const std::size_t count = taken.size();
  bytes.append(taken);
  read_queue_.remove(count);
  return count;
}

void base::write_line(std::string_view text, bool flush_now) {
  write_queue_.append(text);
  write_queue_.append("\r\n");
  if (flush_now) flush();
}

void base::write(std::string_view text) {
  write_queue_.append(text);
  flush();
}

void raw::flush() {
  // Taken out first, so that nothing is left to send again if this fails.
  const byte_queue leaving = std::exchange(write_queue(), byte_queue());
  send_all(leaving.view().data(), leaving.size());
}

void raw::fill() {
  const std::span<char> room = read_queue().prepare(receive_size);
  read_queue().commit(receive(room.data(), room.size()));
}

}  // namespace tcp

namespace udp {

void raw::open(const address::base& address) { open_socket(address, platform::typeDatagram); }

}  // namespace udp

}  // namespace replay::internet::transport
