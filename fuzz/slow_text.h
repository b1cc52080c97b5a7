// The slow way of the functions that must take linear time: in place and step by step, for
// comparison.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "replay/text.h"

/// replace_all for a pattern that is not empty.
inline void replaceInPlace(std::string& text, std::string_view pattern,
                           std::string_view replacement) {
  for (std::size_t at = text.find(pattern); at != std::string::npos;) {
    text.erase(at, pattern.size()).insert(at, replacement);
    at = text.find(pattern, at + replacement.size());
  }
}

/// scan_value with a lowered copy of all that is left for each tag.
inline bool scanWithLoweredCopies(std::string_view document, std::string_view path,
                                  std::string& out) {
  const std::vector<std::string> names = replay::split(path, ".");
  if (names.empty()) return false;
  std::size_t pos = 0;
  for (std::size_t current = 0; current < names.size();) {
    pos = document.find('<', pos);
    if (pos == std::string_view::npos) return false;
    pos = document.find_first_not_of('<', pos);
    if (pos == std::string_view::npos) return false;
    const std::string rest = replay::lowered(document.substr(pos));
    if (rest.starts_with(replay::lowered(names[current]))) ++current;
  }
  pos = document.find('>', pos);
  pos = document.find_first_not_of('>', pos);
  const std::size_t end = document.find('<', pos);
  std::string value(document.substr(pos, end == std::string_view::npos ? end : end - pos));
  replaceInPlace(value, "&lt;", "<");
  replaceInPlace(value, "&gt;", ">");
  replaceInPlace(value, "&amp;", "&");
  replaceInPlace(value, "&apos;", "'");
  replaceInPlace(value, "&quot;", "\"");
  out = value;
  return true;
}

using Scan = bool (*)(std::string_view document, std::string_view path, std::string& out);

// What a scan gives, or the failure in its place. The out string is set before, so that one that
// ought to be left alone shows.
inline std::string outcome(Scan scan, std::string_view document, std::string_view path) {
  std::string out = "untouched";
  try {
    return (scan(document, path, out) ? "true " : "false ") + out;
  } catch (const std::out_of_range&) {
    return "out of range " + out;
  }
}
