// The codes of findings.
#pragma once

#include <cstdint>
#include <string_view>

namespace reader {

enum class Code : std::uint8_t {
  none,
  notWired,
  fileMissing,
  customer,
  server,
  users,
  configuration,
  noActive,
  severalActive,
  access,
  senderFilter,
  noServerName,
  books,
  load,
  entry,
  import,
  updates,
  createEvent,
  readEvents,
  event,
  noEnd,
  overwritten,
  lateStart,
  severalRuns
};

std::string_view nameOf(Code code);

/// What it means for an administrator.
std::string_view sentenceOf(Code code);

}  // namespace reader
