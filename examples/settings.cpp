// Reads lines such as "Limit = 100" from the standard input. Its failures are a tree of their own
// below that of the library.
//
//   echo "Limit = 100" | settings

#include <iostream>

#include "replay/exception.h"
#include "replay/text.h"
#include "replay/variant.h"

class bad_settings : public replay::exception {
 public:
  explicit bad_settings(const std::string& message) : exception(message) {
    append_name("settings");
  }
};

class unknown_name : public bad_settings {
 public:
  explicit unknown_name(const std::string& name) : bad_settings(name) { append_name("unknown"); }
};

int main() {
  try {
    replay::variant limit(10);
    for (std::string line; std::getline(std::cin, line);) {
      const std::vector<std::string> parts = replay::split(line, " =\t\r");
      if (parts.empty()) continue;
      if (parts.size() != 2) throw bad_settings(line);
      if (!replay::iequals(parts[0], "limit")) throw unknown_name(parts[0]);
      limit = replay::variant(parts[1]);
    }
    std::cout << "limit " << limit.as_integer() << '\n';
    return 0;
  } catch (const bad_settings& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
