// One item of an export: its value as a store has it, or why it is left out.
//
// What is left out is not kept while it is read: as soon as an item is known to be left out, the
// rest of it is passed over.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "import/xml_reader.h"

namespace dxl {

struct ItemOutcome {
  std::string json;       ///< The value, empty if the item is left out.
  std::size_t bytes = 0;  ///< The size of its name and texts.
  std::string leftOutAs;  ///< The value's element or another word; empty if the item is kept.
};

class ItemReader {
 public:
  /// `zone` is that of times without an offset, in hours west of GMT.
  explicit ItemReader(std::chrono::hours zone) : zone_(zone) {}

  /// Begins an item of which, name included, at most `mostBytes` may be kept.
  void begin(std::string name, std::size_t mostBytes);

  /// Begins an item that is left out whatever it holds.
  void beginLeftOut(std::string name, std::string_view word);

  const std::string& name() const { return name_; }

  /// Elements and texts within the item; `level` is that of the element, from 1 for the value, and
  /// of a text that of the element around it.
  void start(int level, const Element& element);
  void text(int level, std::string_view part);
  void end(int level);

  /// Throws Flaw if the item were to be kept and is too large for that.
  ItemOutcome finish();

 private:
  enum class Kind { other, text, textList, number, time };

  static Kind kindOf(const Element& element);
  bool isWanted() const { return leftOutAs_.empty(); }
  void startValue(const Element& element);
  void startInText(int level, const Element& element);
  void append(std::string_view part);
  void appendToFigure(std::string_view part);
  void appendNumbered(std::string_view digits);
  std::string valueAsJson();

  std::chrono::hours zone_;
  std::string name_;
  std::string valueName_;
  std::string leftOutAs_;
  std::string text_;
  std::string list_;
  Kind kind_ = Kind::other;
  bool isRefused_ = false;  // from its beginning
  int values_ = 0;
  std::size_t bytes_ = 0;
  std::size_t mostBytes_ = 0;
};

}  // namespace dxl
