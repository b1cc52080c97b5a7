// A note made of the events of a JSON parser, which come in the order of the text.
//
// Of a name that stands twice the later value counts: one that cannot stand there does no harm if
// another follows. So what is wrong is kept by its name until all has been read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "store/note.h"

namespace store {

/// What digits stand for, two of base 16 for each byte, or nothing if there is anything else.
std::optional<std::string> bytesOf(std::string_view digits);

/// The parser takes a zero byte for the end of its text.
bool holdsZero(std::string_view line);

/// Reads one line after the other: what it needs for one serves the next.
class NoteReader {
 public:
  /// Forgets the line before. Whether all of this one is JSON.
  bool read(std::string_view line);

  /// The note, if the whole line has been read and is one. It leaves the object.
  std::optional<Note> takeNote();

  /// Whether the parser failed because a line of this length ends before its value does.
  bool endsEarly(std::size_t length) const { return !isWhole_ && failedAt_ > length; }

  // What the parser calls. All answer whether it shall go on.
  bool null() { return take(std::nullopt); }
  bool boolean(bool) { return take(std::nullopt); }
  bool number_integer(std::int64_t number) { return take(static_cast<double>(number)); }
  bool number_unsigned(std::uint64_t number);
  bool number_float(double number, const std::string&) { return take(number); }
  bool string(const std::string& text) { return take(text); }
  template <typename Bytes>
  bool binary(const Bytes&) {
    return false;  // is in no text
  }
  bool start_object(std::size_t);
  bool key(const std::string& name);
  bool end_object() { return end(); }
  bool start_array(std::size_t);
  bool end_array() { return end(); }
  template <typename Exception>
  bool parse_error(std::size_t position, const std::string&, const Exception& exception) {
    constexpr int syntaxError = 101;  // and not a number that is too large
    if (exception.id == syntaxError) failedAt_ = position;
    return false;
  }

 private:
  void begin();

  // What the reader is in: `form` is the object of a time or of bytes, `other` whatever means
  // nothing.
  enum class Place : std::uint8_t { line, items, list, form, other };
  using Value = std::optional<ItemValue>;  // nothing for what no item can be
  using Names = std::set<std::string>;

  void mergeItems();
  bool isIn(Place place) const { return !places_.empty() && places_.back() == place; }
  bool take(Value value);
  void takeMember(Value value);
  void takeItem(Value value);
  void takeEntry(Value value);
  bool end();
  Value endOfForm();
  static void judge(Names& wrong, const std::string& name, bool isRight);

  std::vector<Place> places_;  // from the outermost
  bool isWhole_ = false;
  std::size_t failedAt_ = 0;

  std::string member_;  // of the line: the last name
  Names wrongMembers_;
  bool hasItems_ = false;
  std::optional<std::string> profile_;
  std::optional<std::string> user_;
  Note note_;

  std::string item_;         // the last name
  std::vector<Item> items_;  // as they come, of a name perhaps several
  Names wrongItems_;
  std::optional<TextList> list_;  // none if an entry is no text

  std::optional<std::string> form_;  // the name of the only member
  std::optional<std::string> formText_;
  bool hasMoreMembers_ = false;
};

}  // namespace store
