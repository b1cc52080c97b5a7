#include "offline/messages.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "offline/program_texts.h"

namespace offline {
namespace {

std::vector<std::string> warnings;

}  // namespace

void tell(std::string_view line) {
  constexpr std::size_t longest = 4096;  // a name of an export may have megabytes
  std::string shown(line.substr(0, longest));
  std::replace_if(shown.begin(), shown.end(), isControl, ' ');
  std::cerr << shown << '\n';
}

void warn(std::string_view what) { warnings.emplace_back(what); }

void tellWarnings() {
  for (const std::string& warning : std::exchange(warnings, {}))
    tell(std::string(programName).append(": warning: ").append(warning));
}

void tellFailure(std::string_view why) {
  tellWarnings();
  tell(std::string(programName).append(": ").append(why));
}

}  // namespace offline
