#include "replay/internet/xml_value.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "replay/finder.h"
#include "replay/text.h"

namespace replay::internet {
namespace {

struct entity {
  std::string_view name;
  std::string_view character;
};

// In this order "&amp;lt;" becomes "&lt;", and "&amp;quot;" a quotation mark.
constexpr entity entities[] = {
    {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}, {"&apos;", "'"}, {"&quot;", "\""}};

// Where the name of the first such tag at or behind `from` begins, or npos.
std::size_t find_tag(std::string_view document, std::string_view name, std::size_t from) {
  if (name.starts_with('<')) return std::string_view::npos;  // of a run, the last "<" opens the tag
  const auto fold = [](char character) { return lowered(character); };
  const std::size_t tag = finder("<" + lowered(name), fold).find(document, from);
  return tag == std::string_view::npos ? tag : tag + 1;
}

// The text behind the tag that `from` lies in, up to the next tag.
std::string_view text_behind(std::string_view document, std::size_t from) {
  const std::size_t begin = document.find_first_not_of('>', document.find('>', from));
  const std::string_view rest = document.substr(begin);  // raises where nothing follows
  return rest.substr(0, rest.find('<'));
}

}  // namespace

bool scan_value(std::string_view document, std::string_view path, std::string& out) {
  const std::vector<std::string> names = split(path, ".");
  if (names.empty()) return false;
  std::size_t position = 0;
  for (const std::string& name : names) {
    position = find_tag(document, name, position);
    if (position == std::string_view::npos) return false;
  }
  std::string value(text_behind(document, position));
  for (const auto& [name, character] : entities) replace_all(value, name, character);
  out = std::move(value);
  return true;
}

}  // namespace replay::internet
