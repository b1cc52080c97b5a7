// The bytes of one line of a file that is Latin-1 with CR LF for each line feed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

/// A buffer that is made once and filled for each line anew. A text that holds a unit above 255 is
/// cut in front of it, and the line takes nothing more.
class LineBytes {
 public:
  void clear();
  void append(std::u16string_view text);

  std::string_view bytes() const { return {buffer_.data(), size_}; }

  /// Whether a text was cut.
  bool isCut() const { return isCut_; }

 private:
  std::string buffer_;  // as large as the longest line, so that none of it is filled twice
  std::size_t size_ = 0;
  bool isCut_ = false;
};

}  // namespace base
