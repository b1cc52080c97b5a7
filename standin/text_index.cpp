#include "standin/text_index.h"

#include <algorithm>

#include "store/letters.h"

namespace standin {
namespace {

std::string asked(const std::string& text, bool lowers) {
  return lowers ? store::lowered(text) : text;
}

}  // namespace

bool TextCondition::holds(const store::Note& note) const {
  return std::ranges::any_of(store::textsOf(note.find(item)),
                             [this](const std::string& one) { return asked(one, lowers) == text; });
}

void TextIndex::add(const store::Note& document) {
  for (const std::string& text : store::textsOf(document.find(item_)))
    documents_[asked(text, lowers_)].insert(document.id);
}

void TextIndex::remove(const store::Note& document) {
  for (const std::string& text : store::textsOf(document.find(item_))) {
    const auto found = documents_.find(asked(text, lowers_));
    if (found == documents_.end()) continue;  // the text stands twice in a list
    found->second.erase(document.id);
    if (found->second.empty()) documents_.erase(found);
  }
}

const std::set<std::uint32_t>& TextIndex::documentsWith(const std::string& text) const {
  static const std::set<std::uint32_t> none;
  const auto found = documents_.find(text);
  return found == documents_.end() ? none : found->second;
}

}  // namespace standin
