// What the program says about its own work, on the standard error.
//
// Names and texts of an export come into messages, so control characters of any message show as
// blanks: a line of an export never passes for one of the program.
#pragma once

#include <stdexcept>
#include <string_view>

namespace offline {

/// Ends the run; its text is for the person in front of the screen.
class Failed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Shows a line as it is.
void tell(std::string_view line);

/// Keeps what is not as it should be, and does not end the run, for tellWarnings.
void warn(std::string_view what);

/// Shows the warnings, which stand together behind all that the work has said.
void tellWarnings();

/// Shows why the program ends without a report.
void tellFailure(std::string_view why);

}  // namespace offline
