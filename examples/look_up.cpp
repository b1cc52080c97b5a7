// Prints the address of each host that is named.
//
//   look_up localhost mail.example

#include <iostream>

#include "replay/internet/address.h"
#include "replay/internet/environment.h"

int main(int count, char** arguments) {
  using namespace replay::internet;
  constexpr int dotted = 2;
  int failed = 0;
  try {
    const environment started;
    for (int index = 1; index < count; ++index) {
      try {
        const address::ip4 found(arguments[index], 0);
        std::cout << arguments[index] << ' ' << found.name(dotted) << '\n';
      } catch (const address::host_not_found&) {
        std::cout << arguments[index] << " is no host\n";
        failed = 1;
      }
    }
    return failed;
  } catch (const replay::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
