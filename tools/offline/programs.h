// The programs that this one runs, and running them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace offline {

struct Programs {
  std::filesystem::path diagnostics;
  std::filesystem::path library;  // the stand-in Notes library
};

/// The programs beside this one. The library lies in a folder of its own, in a build as in a
/// package. Throws Failed if one is missing.
Programs findPrograms();

/// Runs a program with the streams of this one and waits for its end. Gives its exit status, or 128
/// plus the number of the signal that ended it. Throws std::system_error if it does not start.
int runProgram(std::vector<std::string> command);

}  // namespace offline
