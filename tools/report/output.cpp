#include "report/output.h"

#include <iostream>
#include <utility>

#include "platform/replaced_files.h"
#include "report/files.h"

namespace reader {

Output::Output(std::optional<std::string> file, std::vector<std::string> inputs)
    : file_(std::move(file)), inputs_(std::move(inputs)) {
  if (file_ == "-") file_.reset();
  refuseInputs();
  bytes_.exceptions(std::ios::badbit);  // so that a lack of memory is told
}

std::ostream& Output::stream() {
  if (file_) return bytes_;
  return std::cout;
}

// The inputs once more: a map may have been made only now, under the same name.
void Output::finish() {
  if (!file_) return flushStandardOutput();
  refuseInputs();
  require(platform::replaceFile(*file_, bytes_.view(), platform::Readers::usual), *file_,
          "written");
}

void Output::refuseInputs() const {
  for (const std::string& input : inputs_) {
    if (file_ && platform::isSameFile(*file_, input))
      throw Failure(*file_ + ": the output would take the place of what is read");
  }
}

void tellFailure(const std::string& reason) { std::cerr << "qbreport: " << reason << '\n'; }

void flushStandardOutput() {
  std::cout.flush();
  if (!std::cout) throw Failure("standard output cannot be written");
}

}  // namespace reader
