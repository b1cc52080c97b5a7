// A report without what it tells about whom it is from.
#pragma once

#include <ostream>

#include "report/masked_parts.h"
#include "report/pseudonyms.h"

namespace reader {

/// Gives each value of the report a pseudonym.
void collectValues(const MaskedParts& parts, Pseudonyms& pseudonyms);

/// Writes the report with its values replaced, once they are collected. All else is written byte
/// for byte.
void writeMasked(const MaskedParts& parts, Pseudonyms& pseudonyms, std::ostream& out);

}  // namespace reader
