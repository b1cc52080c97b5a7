// Reading XML whoever wrote it: in pieces, without anything from elsewhere, within limits.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "import/export_file.h"

namespace dxl {

/// The largest tag or comment, in bytes of the file, and the most that is kept of a note.
inline constexpr std::size_t largestPart = std::size_t{16} << 20U;

/// An element as its start tag says. It lasts as long as the call that is given it.
struct Element {
  std::string_view name;          ///< Without prefix.
  bool isOfExports;               ///< In the namespace of exports, or in none.
  const char* const* attributes;  ///< Name and value in turn, a null pointer at the end.

  bool is(std::string_view wanted) const { return isOfExports && name == wanted; }

  /// The value of an attribute, or null if there is none.
  const char* find(std::string_view wanted) const;

  /// The value of an attribute, empty if there is none: for those where both mean the same.
  std::string_view attribute(std::string_view wanted) const;
};

/// What is told about a file. What its functions throw ends the reading.
class ElementHandler {
 public:
  virtual ~ElementHandler() = default;
  virtual void start(const Element& element) = 0;
  virtual void end() = 0;
  /// A text may come in several parts.
  virtual void text(std::string_view part) = 0;
};

/// Reads a file to its end and says after each piece how many bytes are done. Throws ImportFailure,
/// with file and line also for a Flaw of the handler, and for a file that changes meanwhile.
void readXml(ExportFile& file, ElementHandler& handler,
             const std::function<void(std::uint64_t)>& progress);

}  // namespace dxl
