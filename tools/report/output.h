// Where a command writes.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace reader {

/// Standard output, or a file that is replaced once all is written. The shell's own redirection
/// empties a file before it is read, and that of PowerShell makes UTF-16 of what it gets.
class Output {
 public:
  /// No name and "-" are standard output. Raises Failure if the file is one of `inputs`, or cannot
  /// be written.
  Output(std::optional<std::string> file, std::vector<std::string> inputs);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output();

  /// To a file it raises Failure where that cannot be written.
  std::ostream& stream();

  /// To be called once all is written. Raises Failure.
  void finish();

 private:
  class FileBuffer;

  void refuseInputs() const;

  std::optional<std::string> file_;
  std::vector<std::string> inputs_;
  std::unique_ptr<FileBuffer> buffer_{};
  std::ostream stream_{nullptr};
};

/// Tells on standard error.
void tellFailure(const std::string& reason);

/// Raises Failure if standard output has not taken everything.
void flushStandardOutput();

}  // namespace reader
