// Which documents have a text in an item: what a search for it would otherwise ask every document.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/note.h"

namespace standin {

/// That one of the texts of an item is this text, or is it with the letters of ASCII made small.
struct TextCondition {
  std::string item;
  bool lowers;
  std::string text;

  bool holds(const store::Note& note) const;
};

/// The documents by the texts of one item.
class TextIndex {
 public:
  TextIndex(std::string item, bool lowers) : item_(std::move(item)), lowers_(lowers) {}

  void add(const store::Note& document);
  void remove(const store::Note& document);

  const std::set<std::uint32_t>& documentsWith(const std::string& text) const;

 private:
  std::string item_;
  bool lowers_;
  std::unordered_map<std::string, std::set<std::uint32_t>> documents_;  // by texts
};

}  // namespace standin
