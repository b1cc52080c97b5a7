// Days in the values of a report.
#pragma once

#include <string>
#include <string_view>

namespace reader {

/// The day that a text begins with, if that is yyyy-mm-dd; else nothing.
std::string_view dayOf(std::string_view text);

/// A time yyyy-mm-ddThh:mm:ss with a blank in place of the letter.
std::string forPeople(std::string time);

}  // namespace reader
