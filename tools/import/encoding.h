// The encoding of an export: UTF-8, UTF-16 with a byte order mark, ISO-8859-1 or US-ASCII.
//
// The XML parser knows these as well, but lets pass what this file looks at: UTF-16 without a mark,
// a mark that says otherwise than the declaration, and surrogates of UTF-16 that are no pair.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dxl {

class Encoding {
 public:
  /// Looks at the first bytes of a file. Throws Flaw for UTF-16 without a mark.
  void begin(std::string_view bytes);

  /// Compares what the XML declaration names. Throws Flaw.
  void declare(std::string_view name) const;

  /// The length of the part of the next piece of the file, of an even size but for the last, that
  /// has no surrogate out of place.
  std::size_t validPart(std::string_view piece);

  /// The piece of the file with each unit as a character; those beyond ASCII are no matter.
  std::string narrowed(std::string_view piece) const;

  bool isWide() const { return mark_ == Mark::utf16Little || mark_ == Mark::utf16Big; }

 private:
  enum class Mark { none, utf8, utf16Little, utf16Big };

  unsigned unitAt(std::string_view piece, std::size_t at) const;

  Mark mark_ = Mark::none;
  bool isHalf_ = false;  // the first surrogate of a pair is at the end of the last piece
};

}  // namespace dxl
