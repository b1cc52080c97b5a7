// One item of an export: its value as a store has it, or why it is left out.
//
// What is left out is not kept while it is read: as soon as an item is known to be left out, the
// rest of it is passed over.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "import/xml_reader.h"
#include "store/note.h"

namespace dxl {

struct ItemOutcome {
  store::ItemValue value;
  std::size_t bytes =
      0;  ///< The size of its name and texts, also where they are too large to keep.
  std::string leftOutAs;  ///< The value's element or another word; empty if the item is kept.
};

class ItemReader {
 public:
  /// Begins an item. Of one whose name and texts have more than `mostBytes` the texts are not kept.
  /// `zone` is that of times without an offset, in hours west of GMT.
  ItemReader(std::string name, std::size_t mostBytes, std::chrono::hours zone);

  const std::string& name() const { return name_; }

  /// Elements and texts within the item; `level` is that of the element, from 1 for the value, and
  /// of a text that of the element around it.
  void start(int level, const Element& element);
  void text(int level, std::string_view part);
  void end(int level);

  ItemOutcome finish();

 private:
  enum class Kind { other, text, textList, number, time };

  static Kind kindOf(const Element& element);
  bool isWanted() const { return leftOutAs_.empty(); }
  bool isFigure() const { return kind_ == Kind::number || kind_ == Kind::time; }
  int levelOfTexts() const { return kind_ == Kind::textList ? 2 : 1; }
  void startValue(const Element& element);
  void append(std::string_view part);
  void appendNumbered(std::string_view digits);
  std::optional<store::ItemValue> value();

  std::string name_;
  std::size_t mostBytes_;
  std::chrono::hours zone_;
  std::string valueName_;
  std::string leftOutAs_;
  std::string text_;
  store::TextList list_;
  Kind kind_ = Kind::other;
  int values_ = 0;
  std::size_t bytes_;
};

}  // namespace dxl
