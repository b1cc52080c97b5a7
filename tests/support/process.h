// Running a built program as a user would.
#pragma once

#include <string>
#include <vector>

namespace test {

struct ProcessResult {
  int status;          ///< Exit status; a program that a signal ended has 128 plus its number.
  std::string output;  ///< What it wrote on standard output, as bytes.
};

/// Runs `command`, the program and its arguments, and waits for its end. Arguments hold no quotes.
/// `outputFile` is where its output is kept meanwhile; standard error goes nowhere.
ProcessResult runProcess(const std::vector<std::string>& command, const std::string& outputFile);

/// Kills this process: no other thread goes on, and nothing runs that is registered for the end.
/// Who runs it sees `killedStatus`.
[[noreturn]] void killSelf();
inline constexpr int killedStatus = 137;

}  // namespace test
