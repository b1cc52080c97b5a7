// The stand-in of this build as the Notes library of a test program.
#pragma once

#include <filesystem>

#include "notes/api.h"
#include "platform/files.h"
#include "support/folders.h"

namespace test {

/// Fills `notes::api` from the library: once, before anything else. Whether that worked.
inline bool loadStandIn() {
  const std::filesystem::path before = std::filesystem::current_path();
  platform::changeDirectory(inBuild("standin"));
  const bool isLoaded = notes::loadNotesLibrary("nnotes.dll");
  std::filesystem::current_path(before);
  return isLoaded;
}

}  // namespace test
