#include "replay/internet/http.h"

#include <algorithm>
#include <limits>

#include "replay/internet/transport.h"
#include "replay/variant.h"

namespace replay::internet::http {
namespace {

using transport::tcp::raw;
using connection_failed = raw::connection_failed;

constexpr std::int32_t status_continue = 100;

// No server makes the client set more memory aside than this before the bytes are there.
constexpr std::int32_t largest_reserve = 64 << 20;

void go_on(bool answer) {
  if (!answer) throw aborted("");
}

std::uint32_t count_of(const std::string& bytes) {
  return static_cast<std::uint32_t>(bytes.size());
}

void send(raw& stream, const request& request, monitor_type& monitor, const std::string& method) {
  go_on(monitor.on_request(method, request.uri));
  std::string line = method;
  stream.write_line(line.append(" ").append(request.uri).append(" HTTP/1.1"), false);
  for (const auto& [name, value] : request.headers) {
    go_on(monitor.on_request_header(name, value));
    line = name;
    stream.write_line(line.append(": ").append(value), false);
  }
  stream.write_line("", true);
  if (request.body.empty()) return;
  const std::uint32_t length = count_of(request.body);
  go_on(monitor.on_request_body(request.body, 0, length, length));
  stream.write(request.body);
}

// The next line that is not empty.
std::string read_text_line(raw& stream) {
  std::string line;
  while (line.empty()) stream.read_line(line);
  return line;
}

std::int32_t read_status(raw& stream) {
  const std::string line = read_text_line(stream);
  if (!starts_with(line, "HTTP/1")) throw invalid_response(line);
  const std::vector<std::string> parts = split(line, " ");
  if (parts.size() < 2) throw invalid_response(line);
  return variant(parts[1]).as_integer();
}

// Ends with a line that has no colon, or nothing but colons and blanks behind its first one.
void read_headers(raw& stream, monitor_type& monitor, header_map& headers) {
  headers.clear();
  std::string line;
  for (;;) {
    stream.read_line(line);
    const std::size_t colon = line.find(':');
    const std::size_t begin =
        colon == std::string::npos ? colon : line.find_first_not_of(": ", colon);
    if (begin == std::string::npos) return;
    const std::string name = line.substr(0, colon);
    std::string value = line.substr(begin);
    go_on(monitor.on_response_header(name, value));
    headers[name] = std::move(value);
  }
}

void read_head(raw& stream, monitor_type& monitor, response& reply) {
  do {
    reply.status = read_status(stream);
    go_on(monitor.on_status(reply.status));
    read_headers(stream, monitor, reply.headers);
  } while (reply.status == status_continue);
}

// The body of a reply while it grows.
class body_reader {
 public:
  body_reader(raw& stream, monitor_type& monitor, std::int32_t length, std::string& body)
      : stream_(stream), monitor_(monitor), length_(length), body_(body) {
    if (length > 0) body.reserve(static_cast<std::size_t>(std::min(length, largest_reserve)));
  }

  void read_to_end() {
    try {
      for (;;) read_piece(std::string::npos);
    } catch (const connection_failed&) {
      // However the connection ended: whether it was too early, only the length tells.
      if (length_ != 0 && static_cast<std::int64_t>(body_.size()) != length_) throw closed("");
    }
  }

  void read_chunks() {
    for (;;) {
      std::uint64_t left = 0;
      // An empty line is the end of the chunk before.
      hex_value(read_text_line(stream_), left);
      if (left == 0) return;
      while (left != 0) {
        left -= read_piece(static_cast<std::size_t>(
            std::min<std::uint64_t>(left, std::numeric_limits<std::size_t>::max())));
      }
    }
  }

 private:
  std::size_t read_piece(std::size_t maximum) {
    const std::size_t count = stream_.append(maximum, body_);
    go_on(monitor_.on_response_body(body_, count_of(body_), static_cast<std::uint32_t>(count),
                                    length_));
    return count;
  }

  raw& stream_;
  monitor_type& monitor_;
  std::int32_t length_;
  std::string& body_;
};

void read_body(raw& stream, monitor_type& monitor, response& reply) {
  const auto length = reply.headers.find("Content-Length");
  const bool has_length = length != reply.headers.end();
  body_reader reader(stream, monitor, has_length ? variant(length->second).as_integer() : 0,
                     reply.body);
  const auto encoding = reply.headers.find("Transfer-Encoding");
  if (encoding == reply.headers.end()) {
    reader.read_to_end();
  } else if (iequals(encoding->second, "chunked")) {
    reader.read_chunks();
  } else {
    throw invalid_response("unsupported transfer-encoding");
  }
}

response exchange(const request& request, monitor_type& monitor, const std::string& method) {
  raw stream;
  stream.open(request.address);
  stream.connect(request.address);
  stream.set_receive_timeout();
  send(stream, request, monitor, method);
  response reply;
  read_head(stream, monitor, reply);
  read_body(stream, monitor, reply);
  return reply;
}

}  // namespace

bool monitor_type::on_request(const std::string& /*method*/, const std::string& /*uri*/) {
  return true;
}

bool monitor_type::on_status(std::int32_t /*status*/) { return true; }

bool monitor_type::on_request_header(const std::string& /*name*/, const std::string& /*value*/) {
  return true;
}

bool monitor_type::on_response_header(const std::string& /*name*/, const std::string& /*value*/) {
  return true;
}

bool monitor_type::on_request_body(const std::string& /*body*/, std::uint32_t /*offset*/,
                                   std::uint32_t /*count*/, std::uint32_t /*total*/) {
  return true;
}

bool monitor_type::on_response_body(const std::string& /*body*/, std::uint32_t /*length*/,
                                    std::uint32_t /*piece*/, std::int32_t /*total*/) {
  return true;
}

response perform(const request& request, monitor_type& monitor, const std::string& method) {
  try {
    return exchange(request, monitor, method);
  } catch (const connection_failed&) {
    throw closed("");
  }
}

response get(const request& request, monitor_type& monitor) {
  return perform(request, monitor, "GET");
}

response get(const request& request) {
  monitor_type monitor;
  return get(request, monitor);
}

}  // namespace replay::internet::http
