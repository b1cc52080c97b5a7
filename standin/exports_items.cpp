// Items of notes.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "standin/caller_text.h"
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/item_text.h"
#include "standin/session.h"
#include "standin/time_date.h"
#include "store/letters.h"

using namespace standin;

namespace {

const store::ItemValue& valueOf(NOTEHANDLE note, std::string_view name) {
  const store::ItemValue* value = session().openNote(note).note.find(name);
  if (value == nullptr) throw Failure(Status::noSuchItem);
  return *value;
}

// The value of an item if it is there and of this type, or else null.
template <typename Type>
const Type* valueIf(NOTEHANDLE note, const char* item) {
  requireAll(item);
  return std::get_if<Type>(session().openNote(note).note.find(item));
}

void set(NOTEHANDLE note, const char* item, store::ItemValue value) {
  requireAll(item);
  const std::string_view name = item;
  if (name.empty() || !store::isUtf8(name)) throw Failure(Status::wrongItemName);
  session().openNote(note).note.set(name, std::move(value));
}

}  // namespace

STATUS NOTES_CALL NSFItemInfo(NOTEHANDLE note, const char* item, WORD item_length, void*,
                              WORD* data_type, void*, DWORD* value_length) {
  return guard([&] {
    requireAll(item);
    const store::ItemValue& value = valueOf(note, {item, item_length});
    if (data_type != nullptr) *data_type = typeOf(value);
    if (value_length != nullptr) *value_length = lengthOf(value);
  });
}

WORD NOTES_CALL NSFItemGetText(NOTEHANDLE note, const char* item, char* buffer, WORD size) {
  return guardValue(WORD{0}, [&] {
    requireAll(buffer);
    const auto* text = valueIf<std::string>(note, item);
    return copyText(text == nullptr ? std::string_view() : *text, buffer, size);
  });
}

WORD NOTES_CALL NSFItemGetTextListEntries(NOTEHANDLE note, const char* item) {
  return guardValue(WORD{0}, [&] {
    const auto* entries = valueIf<store::TextList>(note, item);
    constexpr std::size_t most = std::numeric_limits<WORD>::max();
    return static_cast<WORD>(entries == nullptr ? 0 : std::min(entries->size(), most));
  });
}

WORD NOTES_CALL NSFItemGetTextListEntry(NOTEHANDLE note, const char* item, WORD index, char* buffer,
                                        WORD size) {
  return guardValue(WORD{0}, [&] {
    requireAll(buffer);
    const auto* entries = valueIf<store::TextList>(note, item);
    const bool isThere = entries != nullptr && index < entries->size();
    return copyText(isThere ? (*entries)[index] : std::string_view(), buffer, size);
  });
}

BOOL NOTES_CALL NSFItemGetTime(NOTEHANDLE note, const char* item, TIMEDATE* time) {
  return guardValue(BOOL{0}, [&] {
    requireAll(time);
    const auto* moment = valueIf<store::Moment>(note, item);
    if (moment == nullptr) return BOOL{0};
    *time = timeDateOf(*moment);
    return BOOL{1};
  });
}

BOOL NOTES_CALL NSFItemGetNumber(NOTEHANDLE note, const char* item, NUMBER* number) {
  return guardValue(BOOL{0}, [&] {
    requireAll(number);
    const auto* value = valueIf<double>(note, item);
    if (value == nullptr) return BOOL{0};
    *number = *value;
    return BOOL{1};
  });
}

WORD NOTES_CALL NSFItemConvertToText(NOTEHANDLE note, const char* item, char* buffer, WORD size,
                                     char separator) {
  return guardValue(WORD{0}, [&] {
    requireAll(item, buffer);
    const std::string text = textOf(valueOf(note, item), separator, session().zone);
    return static_cast<WORD>(text.copy(buffer, size));
  });
}

STATUS NOTES_CALL NSFItemSetText(NOTEHANDLE note, const char* item, const char* text, WORD length) {
  return guard([&] {
    if (length != 0) requireAll(text);
    set(note, item, textFrom(text, length));
  });
}

STATUS NOTES_CALL NSFItemSetTime(NOTEHANDLE note, const char* item, const TIMEDATE* time) {
  return guard([&] {
    requireAll(time);
    set(note, item, momentOf(*time));
  });
}

STATUS NOTES_CALL NSFItemSetNumber(NOTEHANDLE note, const char* item, const NUMBER* number) {
  return guard([&] {
    requireAll(number);
    if (!std::isfinite(*number)) throw Failure(Status::noFiniteNumber);
    set(note, item, *number);
  });
}
