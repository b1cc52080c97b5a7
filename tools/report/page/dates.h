// Days in the values of a report.
#pragma once

#include <string_view>

namespace reader {

/// The day that a text begins with, if that is yyyy-mm-dd; else nothing.
std::string_view dayOf(std::string_view text);

}  // namespace reader
