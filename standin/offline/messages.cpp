#include "messages.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "program_texts.h"

namespace offline {

void tell(std::string_view line) {
  std::string shown(line);
  std::replace_if(shown.begin(), shown.end(), isControl, ' ');
  std::cerr << shown << '\n';
}

void warn(std::string_view what) {
  tell(std::string(programName).append(": warning: ").append(what));
}

void tellFailure(std::string_view why) { tell(std::string(programName).append(": ").append(why)); }

}  // namespace offline
