// Converts lines from one character set to another, and stops at the first that it cannot convert.
//
//   recode windows-1252 utf-8 <letter.txt >letter-utf8.txt

#include <iostream>

#include "replay/unicode.h"

int main(int count, char** arguments) {
  namespace unicode = replay::unicode;
  if (count != 3) {
    std::cerr << "usage: recode FROM TO\n";
    return 2;
  }
  int number = 0;
  try {
    const unicode::codepage from = unicode::codepage_of_name(arguments[1]);
    const unicode::codepage to = unicode::codepage_of_name(arguments[2]);
    for (std::string line; std::getline(std::cin, line);) {
      ++number;
      std::cout << unicode::to_narrow(unicode::to_wide(line, from), to, true) << '\n';
    }
    return 0;
  } catch (const unicode::unmappable_character&) {
    std::cerr << "line " << number << " has a character that one of the two lacks\n";
  } catch (const replay::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return 1;
}
