// The head of an entry, with which its first line begins.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace reader {

struct EntryHead {
  std::uint64_t time;        ///< Its decimal digits: year, month, day, hour, minute, second.
  std::string_view process;  ///< Digits without zeros before them.
  std::string_view thread;
  std::size_t size;
};

/// The head that a line begins with. Its last tab may be lost where nothing follows it.
std::optional<EntryHead> entryHeadOf(std::string_view line);

}  // namespace reader
