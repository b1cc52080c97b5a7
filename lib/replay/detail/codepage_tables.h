// The names of character sets and code pages, as data.
//
// Each list is entered into its map from the first row to the last, and the first of two rows for
// one key counts. The maps are filled before the program's entry and constant afterwards.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>

#include "replay/unicode.h"

namespace replay::unicode {

struct alias_row {
  const char* name;  ///< Of lower-case letters and digits only.
  codepage page;
};

/// The rows that `codepage_aliases` is filled from, in order; the first of a name counts.
extern const std::span<const alias_row> alias_rows;

/// The pages of normalised character set names.
extern const std::map<std::string, codepage, std::less<>> codepage_aliases;

/// The preferred names of pages.
extern const std::map<codepage, std::string> codepage_names;

}  // namespace replay::unicode
