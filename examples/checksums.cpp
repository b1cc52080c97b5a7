// Prints the MD5 digests of the files in a folder, in the order of their names.
//
//   checksums ./ "*.xml"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

#include "replay/directory_listing.h"
#include "replay/md5.h"
#include "replay/text.h"

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: checksums FOLDER/ MASK\n";
    return 2;
  }
  const std::string folder = arguments[1];
  auto names = replay::list_directory(folder, arguments[2], false, true, false);
  std::ranges::sort(names, replay::iless);
  for (const std::string& name : names) {
    std::ifstream file(folder + name, std::ios::binary);
    if (!file) {
      std::cerr << name << " could not be read\n";
      return 1;
    }
    const std::string content(std::istreambuf_iterator<char>(file), {});
    std::cout << replay::md5_hex(content) << "  " << name << '\n';
  }
  return 0;
}
