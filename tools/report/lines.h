// The lines of a report.
#pragma once

#include <cstddef>
#include <string_view>

namespace reader {

struct Line {
  std::string_view text;  ///< Without zero bytes at its beginning and CRs at its end.
  bool isCut = false;     ///< The last line of a file that does not end with a line feed.
};

/// Takes the line that begins at `at`, and moves `at` behind it. False at the end of `bytes`.
inline bool takeLine(std::string_view bytes, std::size_t& at, Line& line) {
  if (at >= bytes.size()) return false;
  const std::size_t feed = bytes.find('\n', at);
  line.isCut = feed == std::string_view::npos;
  std::string_view text = bytes.substr(at, line.isCut ? feed : feed - at);
  at += text.size() + (line.isCut ? 0 : 1);
  while (text.ends_with('\r')) text.remove_suffix(1);
  while (text.starts_with('\0')) text.remove_prefix(1);
  line.text = text;
  return true;
}

inline std::string_view withoutTabs(std::string_view text) {
  const std::size_t tabs = text.find_first_not_of('\t');
  return tabs == std::string_view::npos ? text.substr(text.size()) : text.substr(tabs);
}

inline bool isBlank(std::string_view text) {
  return text.find_first_not_of("\t ") == std::string_view::npos;
}

inline bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace reader
