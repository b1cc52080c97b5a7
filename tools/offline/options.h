// The command line.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace offline {

struct Options {
  std::filesystem::path into;
  std::optional<std::filesystem::path> notesIni;
  std::optional<std::string> server;
  std::optional<std::chrono::hours> zone;  // west of GMT
  std::vector<std::filesystem::path> exports;
};

/// A command line that says nothing the program could do; its text is the reason.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the command line asks for; nothing if it asked for help or the version, which is shown
/// then. Throws WrongUsage.
std::optional<Options> parseOptions(int argc, char** argv);

/// The one line that tells how the program is called.
std::string usageLine();

}  // namespace offline
