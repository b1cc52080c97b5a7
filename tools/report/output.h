// Where a command writes.
#pragma once

#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace reader {

/// Standard output, or a file that is replaced once all is written. The shell's own redirection
/// empties a file before it is read, and that of PowerShell makes UTF-16 of what it gets.
class Output {
 public:
  /// No name and "-" are standard output. Raises Failure if the file is one of `inputs`.
  Output(std::optional<std::string> file, std::vector<std::string> inputs);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output() = default;

  std::ostream& stream();

  /// To be called once all is written. Raises Failure.
  void finish();

 private:
  void refuseInputs() const;

  std::optional<std::string> file_;
  std::vector<std::string> inputs_;
  std::ostringstream bytes_{};
};

/// Tells on standard error.
void tellFailure(const std::string& reason);

/// Raises Failure if standard output has not taken everything.
void flushStandardOutput();

}  // namespace reader
