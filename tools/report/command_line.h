// The command line of qbreport.
#pragma once

#include <string>
#include <vector>

namespace reader {

/// Runs the command that the words behind the program's name give, and gives its exit status:
/// 0 nothing found or all done, 1 something found, 2 a failure, which standard error tells.
int runCommand(const std::vector<std::string>& arguments);

}  // namespace reader
