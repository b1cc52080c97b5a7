// The sections of a report, in the order in which a run writes them.
#pragma once

#include <cstdint>

namespace reader {

enum class Section : std::uint8_t {
  startingLog,
  systemEnvironment,
  dominoEnvironmentVariables,
  fileCheck,
  customerProfile,
  serverProfile,
  filteredUsers,
  configuration,
  access,
  senderFilter,
  nabImport,
  loadingDirectory,
  importing,
  installedUpdates,
  testEvents,
  events,
  unknown
};

/// As `check` and `json` name it.
const char* nameOf(Section section);

}  // namespace reader
