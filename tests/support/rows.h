// Rows of a table that stands in plain text beside its test: values that were measured elsewhere,
// or texts that a person compares best in columns.
//
// A row is a line. Its fields are separated by one tab or more, so that columns can be aligned; ""
// is an empty field. Empty lines and lines that begin with "# " are left out. In a field \n, \r,
// \t and \\ stand for their characters, \xHH for a byte, and \uHHHH for a 16-bit unit, which may be
// half of a pair, in the form that UTF-8 has for its number.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/folders.h"

namespace test {

struct TextRow {
  std::string where;  ///< File and number of the line, for messages.
  std::vector<std::string> fields;
};

/// The bytes of a unit's number, as UTF-8 has them.
inline std::string bytesOfUnit(unsigned unit) {
  if (unit < 0x80) return {static_cast<char>(unit)};
  const auto tail = static_cast<char>(0x80 | (unit & 0x3F));
  if (unit < 0x800) return {static_cast<char>(0xC0 | unit >> 6), tail};
  return {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)), tail};
}

/// A field whose escapes are resolved.
inline std::string unescaped(const std::string& field) {
  std::string text;
  for (std::size_t at = 0; at < field.size(); ++at) {
    if (field[at] != '\\') {
      text += field[at];
      continue;
    }
    const char kind = field.at(++at);
    const std::size_t digits = kind == 'x' ? 2 : kind == 'u' ? 4 : 0;
    if (digits != 0) {
      const auto number =
          static_cast<unsigned>(std::stoul(field.substr(at + 1, digits), nullptr, 16));
      text += kind == 'x' ? std::string{static_cast<char>(number)} : bytesOfUnit(number);
      at += digits;
    } else {
      text += std::string("\n\r\t\\").at(std::string("nrt\\").find(kind));
    }
  }
  return text;
}

/// The 16-bit units of a field, each character of up to three bytes being one, and one of four
/// bytes a pair.
inline std::u16string wide(const std::string& field) {
  std::u16string text;
  for (std::size_t at = 0; at < field.size();) {
    const auto lead = static_cast<unsigned char>(field[at]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    unsigned number = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i)
      number = number << 6 | (static_cast<unsigned char>(field.at(at + i)) & 0x3FU);
    if (number >= 0x10000) text += static_cast<char16_t>(0xD7C0 + (number >> 10));
    text += static_cast<char16_t>(number < 0x10000 ? number : 0xDC00 | (number & 0x3FF));
    at += length;
  }
  return text;
}

/// The rows of a file below the folder of the tests, each of which has as many fields as asked.
/// Raises a std::runtime_error that names the place for any other, and for a file without rows.
inline std::vector<TextRow> rowsOf(const std::string& file, std::size_t fields) {
  std::vector<TextRow> rows;
  std::ifstream text(inRepository("tests/" + file), std::ios::binary);
  int number = 0;
  for (std::string line; std::getline(text, line);) {
    ++number;
    if (line.empty() || line.starts_with("# ")) continue;
    TextRow row{file + ":" + std::to_string(number), {}};
    for (std::size_t at = 0; (at = line.find_first_not_of('\t', at)) != std::string::npos;) {
      const std::string field = line.substr(at, line.find('\t', at) - at);
      row.fields.push_back(field == "\"\"" ? "" : unescaped(field));
      at += field.size();
    }
    if (row.fields.size() != fields) throw std::runtime_error(row.where + ": number of fields");
    rows.push_back(row);
  }
  if (rows.empty()) throw std::runtime_error(file + ": no rows");
  return rows;
}

}  // namespace test
