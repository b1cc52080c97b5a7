#include "store/note_reader.h"

#include <bit>
#include <charconv>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "store/letters.h"
#include "store/status.h"

namespace store {
namespace {

std::optional<std::string> textIn(std::optional<ItemValue> value) {
  if (!value.has_value()) return std::nullopt;
  auto* text = std::get_if<std::string>(&*value);
  if (text == nullptr) return std::nullopt;
  return std::move(*text);
}

std::optional<ItemValue> momentIn(std::string_view text) {
  try {
    return momentFromIso(text);
  } catch (const Failure&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<std::string> bytesOf(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (const char* at = digits.data(); at != digits.data() + digits.size(); at += 2) {
    unsigned char byte = 0;
    if (std::from_chars(at, at + 2, byte, 16).ptr != at + 2) return std::nullopt;
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

bool holdsZero(std::string_view line) { return line.find('\0') != std::string_view::npos; }

bool NoteReader::read(std::string_view line) {
  begin();
  return !holdsZero(line) && nlohmann::json::sax_parse(line, this);
}

void NoteReader::begin() {
  places_.clear();
  isWhole_ = false;
  failedAt_ = 0;
  wrongMembers_.clear();
  hasItems_ = false;
  profile_.reset();
  user_.reset();
  note_ = {};
}

std::optional<Note> NoteReader::takeNote() {
  const bool isNote = isWhole_ && hasItems_ && note_.id != 0 && wrongMembers_.empty() &&
                      wrongItems_.empty() && (profile_.has_value() || !user_.has_value());
  if (!isNote) return std::nullopt;
  if (profile_.has_value()) note_.profile = {*std::move(profile_), std::move(user_).value_or("")};
  mergeItems();
  return std::move(note_);
}

// Of the items of one name the first gives the place and the last the value. Each name goes into
// the first free slot from that of its hash on; half of the slots stay free.
void NoteReader::mergeItems() {
  constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
  const std::size_t mask = std::bit_ceil(2 * items_.size() + 1) - 1;
  std::vector<std::size_t> places(mask + 1, none);
  std::size_t count = 0;
  for (Item& item : items_) {
    std::size_t slot = hashOfName(item.name) & mask;
    while (places[slot] != none && !equalNames(items_[places[slot]].name, item.name))
      slot = (slot + 1) & mask;
    if (places[slot] != none) {
      items_[places[slot]].value = std::move(item.value);
      continue;
    }
    if (&items_[count] != &item) items_[count] = std::move(item);
    places[slot] = count++;
  }
  items_.resize(count);
  constexpr std::size_t few = 256;
  if (count > few) {  // moving them costs more than what they leave free behind them
    note_.items.swap(items_);
    return;
  }
  note_.items.assign(std::make_move_iterator(items_.begin()),
                     std::make_move_iterator(items_.end()));
}

bool NoteReader::number_unsigned(std::uint64_t number) {
  if (!isIn(Place::line) || member_ != "note") return take(static_cast<double>(number));
  note_.id =
      number <= std::numeric_limits<std::uint32_t>::max() ? static_cast<std::uint32_t>(number) : 0;
  return true;
}

bool NoteReader::start_object(std::size_t) {
  if (places_.empty()) {
    places_.push_back(Place::line);
  } else if (isIn(Place::line) && member_ == "items") {
    places_.push_back(Place::items);
    hasItems_ = true;
    items_.clear();
    wrongItems_.clear();
  } else if (isIn(Place::other) || isIn(Place::form)) {
    places_.push_back(Place::other);
  } else {
    places_.push_back(Place::form);
    form_.reset();
    hasMoreMembers_ = false;
  }
  return true;
}

bool NoteReader::key(const std::string& name) {
  if (isIn(Place::line)) member_ = name;
  if (isIn(Place::items)) item_ = name;
  if (!isIn(Place::form)) return true;
  if (form_.has_value() && *form_ != name) hasMoreMembers_ = true;
  form_ = name;
  return true;
}

bool NoteReader::start_array(std::size_t) {
  const bool isList = isIn(Place::items);
  if (isList) list_.emplace();
  places_.push_back(isList ? Place::list : Place::other);
  return true;
}

bool NoteReader::end() {
  const Place ended = places_.back();
  places_.pop_back();
  if (ended == Place::form) return take(endOfForm());
  if (ended == Place::list) return take(std::exchange(list_, std::nullopt));
  if (ended == Place::other) return take(std::nullopt);
  isWhole_ = places_.empty();
  return true;
}

NoteReader::Value NoteReader::endOfForm() {
  if (!form_.has_value() || hasMoreMembers_ || !formText_.has_value()) return std::nullopt;
  if (*form_ == "time") return momentIn(*formText_);
  return *form_ == "bytes" ? bytesOf(*formText_) : std::nullopt;
}

bool NoteReader::take(Value value) {
  isWhole_ = places_.empty();
  if (isWhole_) return true;
  switch (places_.back()) {
    case Place::line:
      takeMember(std::move(value));
      break;
    case Place::items:
      takeItem(std::move(value));
      break;
    case Place::list:
      takeEntry(std::move(value));
      break;
    case Place::form:
      formText_ = textIn(std::move(value));
      break;
    case Place::other:
      break;
  }
  return true;
}

void NoteReader::takeMember(Value value) {
  if (member_ == "note") {
    note_.id = 0;
  } else if (member_ == "items") {
    hasItems_ = false;
  } else if (member_ == "profile") {
    profile_ = textIn(std::move(value));
    judge(wrongMembers_, member_, profile_.has_value() && !profile_->empty());
  } else if (member_ == "user") {
    user_ = textIn(std::move(value));
    judge(wrongMembers_, member_, user_.has_value());
  } else {
    judge(wrongMembers_, member_, false);
  }
}

void NoteReader::takeItem(Value value) {
  judge(wrongItems_, item_, value.has_value() && !item_.empty());
  items_.push_back({item_, std::move(value).value_or("")});
}

void NoteReader::takeEntry(Value value) {
  if (!list_.has_value()) return;
  auto text = textIn(std::move(value));
  if (text.has_value())
    list_->push_back(*std::move(text));
  else
    list_.reset();
}

void NoteReader::judge(Names& wrong, const std::string& name, bool isRight) {
  if (!isRight)
    wrong.insert(name);
  else if (!wrong.empty())
    wrong.erase(name);
}

}  // namespace store
