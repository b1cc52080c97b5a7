// What tests of the network half share: the system's tables with members replaced, and failures as
// texts.
#pragma once

#include <cstring>
#include <string>

#include "platform/sockets.h"
#include "replay/exception.h"
#include "replay/internet/detail/name_lookup.h"

namespace test {

/// Puts the tables back at the end of a test, and the look-ups of names with them.
struct Tables {
  Tables() { findLookups(); }
  ~Tables() {
    platform::sockets = sockets;
    platform::systemLibraries = libraries;
    findLookups();
  }

  /// Takes the system's look-ups of names away.
  static void emulateLookups() {
    platform::systemLibraries.LoadLibraryA = [](const char*) -> void* { return nullptr; };
    findLookups();
  }

  static void findLookups() {
    replay::internet::address::process_name_lookup() = replay::internet::address::name_lookup();
  }

  const platform::SocketsApi sockets = platform::sockets;
  const platform::SystemLibrariesApi libraries = platform::systemLibraries;
};

/// What a failed `action` tells: name and message of the class it raised. Empty if it raised none.
template <typename Action>
std::string failureOf(Action action) {
  try {
    action();
  } catch (const replay::exception& failure) {
    return failure.what();
  }
  return "";
}

}  // namespace test
