// A masked report, or an answer about it, with its values again.
#pragma once

#include <deque>
#include <ostream>
#include <string>

#include "report/pseudonyms.h"

namespace reader {

/// Writes the text with the values in place of their pseudonyms: in a report the bytes of the
/// values, in any other text their UTF-8. A pseudonym counts at the place of a value, and wherever
/// no letter or digit stands beside it; one that is not among these stays.
void writeUnmasked(const std::string& text, const std::deque<Pseudonym>& pseudonyms,
                   std::ostream& out);

}  // namespace reader
