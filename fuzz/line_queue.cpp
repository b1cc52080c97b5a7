// Lines of a stream: the first byte of the input is the size of the pieces in which the rest
// arrives.

#include <vector>

#include "check.h"
#include "connection.h"
#include "replay/internet/transport.h"

namespace {

bool isEnd(char byte) { return byte == '\r' || byte == '\n'; }

std::vector<std::string> linesOf(std::string_view bytes) {
  std::vector<std::string> lines;
  for (;;) {
    const std::size_t end = bytes.find_first_of("\r\n");
    // A line counts once the byte behind its terminator is there.
    if (end == std::string_view::npos || end + 1 == bytes.size()) return lines;
    lines.emplace_back(bytes.substr(0, end));
    const char terminator = bytes[end];
    bytes.remove_prefix(end + 1);
    if (isEnd(bytes.front()) && bytes.front() != terminator) bytes.remove_prefix(1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes = asText(data, size).substr(1);
  const Connection connection(bytes, data[0]);
  replay::internet::transport::tcp::raw stream;
  std::vector<std::string> lines;
  try {
    for (std::string line;;) {
      stream.read_line(line);
      lines.push_back(line);
    }
  } catch (const replay::internet::transport::tcp::base::connection_closed&) {
    check(lines == linesOf(bytes));
  }
  return 0;
}
