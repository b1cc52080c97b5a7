#include "standin/text_index.h"

namespace standin {

void TextIndex::add(const store::Note& document) {
  for (const std::string& text : store::textsOf(document.find(item_)))
    documents_[store::folded(text, letters_)].insert(document.id);
}

void TextIndex::remove(const store::Note& document) {
  for (const std::string& text : store::textsOf(document.find(item_))) {
    const auto found = documents_.find(store::folded(text, letters_));
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
