#include "replay/internet/xml_value.h"

#include <array>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "replay/detail/finder.h"
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

// The lower-case form of each character, which a call for each tag of a document would be slow to
// give.
class lower_case {
 public:
  lower_case() {
    for (std::size_t value = 0; value < table_.size(); ++value) {
      table_[value] = lowered(static_cast<char>(value));
    }
  }
  char operator()(char character) const { return table_[static_cast<unsigned char>(character)]; }

 private:
  std::array<char, 256> table_{};
};

// A closing tag is never the one wanted, as its "/" stands where the name would begin. Gives where
// the name of the first such tag at or behind `from` begins, or npos.
std::size_t find_tag(std::string_view document, std::string_view name, std::size_t from,
                     const lower_case& fold) {
  if (name.starts_with('<')) return std::string_view::npos;  // of a run, the last "<" opens the tag
  const std::size_t tag = finder("<" + lowered(name), std::cref(fold)).find(document, from);
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
  const lower_case fold;
  std::size_t pos = 0;
  for (const std::string& name : names) {
    pos = find_tag(document, name, pos, fold);
    if (pos == std::string_view::npos) return false;
  }
  std::string value(text_behind(document, pos));
  for (const auto& [name, character] : entities) replace_all(value, name, character);
  out = std::move(value);
  return true;
}

}  // namespace replay::internet
