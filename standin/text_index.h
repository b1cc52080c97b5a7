// Which documents have a text in an item: what a search for it would otherwise ask every document.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/letters.h"
#include "store/note.h"

namespace standin {

/// That one of the texts of an item, its letters in this case, is this text.
struct TextCondition {
  std::string item;
  store::LetterCase letters;
  std::string text;
};

/// The documents by the texts of one item.
class TextIndex {
 public:
  TextIndex(std::string item, store::LetterCase letters)
      : item_(std::move(item)), letters_(letters) {}

  void add(const store::Note& document);
  void remove(const store::Note& document);

  const std::set<std::uint32_t>& documentsWith(const std::string& text) const;

 private:
  std::string item_;
  store::LetterCase letters_;
  std::unordered_map<std::string, std::set<std::uint32_t>> documents_;  // by texts in that case
};

}  // namespace standin
