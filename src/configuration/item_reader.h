// Tolerant reading of a configuration note: each item gives one field and one row of the report.
//
// An item that is absent, empty or of another type gives its default, and the row shows what is in
// use. No operation raises anything for an item.
#pragma once

#include <string>
#include <vector>

#include "notes/nsf_note.h"

namespace configuration {

struct ReportRow {
  std::u16string label;
  std::u16string value;
};

class ItemReader {
 public:
  /// Rows go to the end of `rows`; both arguments must outlive the reader.
  ItemReader(const notes::NsfNote& note, std::vector<ReportRow>& rows) : note_(note), rows_(rows) {}

  void readText(const std::string& item, const std::u16string& fallback,
                std::u16string& destination, const std::u16string& label);

  /// The exact texts that switch a flag on and off.
  struct Choice {
    std::u16string on;
    std::u16string off;
  };

  void readChoice(const std::string& item, bool fallback, bool& destination,
                  const std::u16string& label, const Choice& choice);

  /// A text list, or a single text; the default is an empty list.
  void readList(const std::string& item, std::vector<std::u16string>& destination,
                const std::u16string& label);

  void addRow(const std::u16string& label, const std::u16string& value);

  const notes::NsfNote& note() const { return note_; }

 private:
  const notes::NsfNote& note_;
  std::vector<ReportRow>& rows_;
};

/// The texts with ", " between them.
std::u16string listed(const std::vector<std::u16string>& texts);

}  // namespace configuration
