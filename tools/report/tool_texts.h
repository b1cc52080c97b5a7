// Texts of the tool's own among the values of a report.
#pragma once

#include <cstddef>
#include <string_view>

namespace reader {

/// Whether an event is one of the three that each run writes.
bool isTestEventText(std::string_view text);

/// The fourteen digits in the name of the file that tests the access, which stands in `line`;
/// nothing if there is none.
std::string_view timeOfTestFile(std::string_view line);

/// The folder of a file whose name is one of the tool's, without the separators behind it; the
/// whole path if the name is another.
std::string_view folderOf(std::string_view path);

}  // namespace reader
