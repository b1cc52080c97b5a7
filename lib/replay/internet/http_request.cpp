#include "replay/internet/http_request.h"

#include <utility>

#include "replay/unicode.h"
#include "replay/variant.h"

namespace replay::internet::http {
namespace {

constexpr std::string_view scheme = "http://";
constexpr std::uint16_t default_port = 80;

struct address_parts {
  std::string host;
  std::uint16_t port = default_port;
  std::string path = "/";
};

address_parts parts_of(std::string_view text) {
  if (starts_with(lowered(text), scheme)) text.remove_prefix(scheme.size());
  address_parts parts;
  std::size_t end = text.find_first_of(":/");
  parts.host = lowered(text.substr(0, end));
  if (end == std::string_view::npos) return parts;
  if (text[end] == ':') {
    // All that is behind the colon: the number ends where the digits do.
    const variant port{std::string(text.substr(end + 1))};
    parts.port = static_cast<std::uint16_t>(port.as_integer());
    end = text.find('/', end);
    if (end == std::string_view::npos) return parts;
  }
  const std::string_view path = text.substr(end);
  parts.path = path.substr(0, path.find('#'));
  return parts;
}

// Escapes blanks, the control characters below them, and all bytes above 127.
std::string wire_escaped(std::string_view text) {
  std::string escaped;
  for (const char byte : text) {
    if (static_cast<signed char>(byte) > ' ') {
      escaped += byte;
    } else {
      escaped.append("%").append(hex_encode({&byte, 1}));
    }
  }
  return escaped;
}

}  // namespace

request::request(const std::string& text) {
  const address_parts parts = parts_of(text);
  address = address::ip4(parts.host, parts.port);
  uri = wire_escaped(unicode::to_utf8(parts.path));
  headers["Host"] = parts.host;
  headers["Connection"] = "close";
}

}  // namespace replay::internet::http
