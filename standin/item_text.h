// What a caller is told about the value of an item, whatever its type.
#pragma once

#include <chrono>
#include <string>

#include "notes/abi.h"
#include "store/note.h"

namespace standin {

/// The type word.
WORD typeOf(const store::ItemValue& value);

/// The bytes that the Notes library counts for a value, the type word included: a number and a time
/// have ten, a text two and its own, a list four and two more than its own for each entry.
DWORD lengthOf(const store::ItemValue& value);

/// The value as text: a time in the form YYYY-MM-DD HH:MM:SS as local time of the zone, hours west
/// of GMT; a number with as many digits as tell it from others; the entries of a list with the
/// separator between them. Throws impossibleTime for a local time that does not exist.
std::string textOf(const store::ItemValue& value, char separator, std::chrono::hours zone);

}  // namespace standin
