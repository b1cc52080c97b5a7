// What ends an import.
#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace dxl {

/// A failure in words for the user, the file and the place included.
class ImportFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What is wrong with an export at the place that is being read; who reads it adds file and line.
class Flaw : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws the ImportFailure of what the system says about a file.
[[noreturn]] inline void failBySystem(const std::string& path, int error = errno) {
  throw ImportFailure(path + ": " + std::generic_category().message(error));
}

}  // namespace dxl
