// The lines of one entry, and what each of them is.
#pragma once

#include <cstdint>
#include <string_view>

#include "report/line_form.h"
#include "report/report.h"

namespace reader {

struct Reading {
  std::uint32_t number;   ///< Of the line in the file, from 1.
  std::string_view text;  ///< Of the first line what stands behind the head.
  bool isFirst;
  bool isCut;
  Match match;

  /// Whether it is no line of the tool, and not blank.
  bool isOther() const { return match.form == nullptr && !isBlank(text); }
};

/// Reads the lines of an entry. To the file's first entry belong the lines before it, to the last
/// a line that was cut.
class EntryReader {
 public:
  EntryReader(const Report& report, EntryNumber number);

  /// False at the end of the entry.
  bool next(Reading& reading);

 private:
  Match matchFirst(std::string_view text) const;
  Match matchFurther(std::string_view text);

  std::string_view bytes_;  // up to the end of the entry
  const Entry& entry_;
  std::size_t at_;
  std::uint32_t line_;
  Place place_ = Place::body;
  int rank_ = 0;
};

}  // namespace reader
