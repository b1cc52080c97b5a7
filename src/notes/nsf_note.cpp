#include "notes/nsf_note.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/library_text.h"

namespace notes {
namespace {

constexpr char listSeparator = '|';
constexpr DWORD typeWordSize = 2;

std::u16string quoted(const std::string& item) {
  return u"Item \"" + base::toWideFromUtf8(item) + u"\"";
}

NsfNote::NsfNoteItemNotPresent notPresent(const std::string& item) {
  return NsfNote::NsfNoteItemNotPresent(quoted(item) + u" is not present in Note.");
}

NsfNote::NsfNoteInvalidItemType notATime(const std::string& item) {
  return NsfNote::NsfNoteInvalidItemType(quoted(item) + u" is not type Time.");
}

}  // namespace

bool NsfNote::isPresent(const std::string& item) const {
  return NSFItemInfo(hNote_, item.c_str(), lengthOf(item), nullptr, nullptr, nullptr, nullptr) == 0;
}

WORD NsfNote::itemType(const std::string& item) const {
  if (!isPresent(item)) throw NsfNoteItemNotPresent(u"Item is not present in Note.");
  WORD type = 0;
  lastStatus_ = NSFItemInfo(hNote_, item.c_str(), lengthOf(item), nullptr, &type, nullptr, nullptr);
  if (lastStatus_ != 0) throw notPresent(item);
  return type;
}

DWORD NsfNote::valueLength(const std::string& item) const {
  if (!isPresent(item)) throw notPresent(item);
  DWORD length = 0;
  lastStatus_ =
      NSFItemInfo(hNote_, item.c_str(), lengthOf(item), nullptr, nullptr, nullptr, &length);
  if (lastStatus_ != 0) throw notPresent(item);
  return length - typeWordSize;
}

// An item may go between two questions. One that is gone at the first is absent, and at a later one
// a failure, so that each step asks anew.
bool NsfNote::hasValue(const std::string& item) const {
  if (!isPresent(item)) return false;
  if (!isPresent(item)) throw notPresent(item);
  return valueLength(item) > 0;
}

std::u16string NsfNote::getText(const std::string& item) const {
  try {
    if (!isText(item)) throw NsfNoteInvalidItemType(u"Item is not type Text.");
  } catch (const NsfNoteItemNotPresent& error) {
    throw NsfNoteError(quoted(item) + u" is not present: " + error.message());
  } catch (const NsfNoteInvalidItemType& error) {
    throw NsfNoteError(u"Invalid item-type \"" + base::toWideFromUtf8(item) + u"\" : " +
                       error.message());
  }
  TextBuffer<NOTES_ITEM_TEXT_SIZE> text;
  NSFItemGetText(hNote_, item.c_str(), text.data(), NOTES_ITEM_TEXT_SIZE);
  return base::toWideFromLocal(text.data());
}

std::u16string NsfNote::getTextOrEmpty(const std::string& item) const {
  return hasValue(item) ? getText(item) : std::u16string();
}

void NsfNote::getTextList(const std::string& item, std::vector<std::u16string>& texts,
                          bool clearFirst) const {
  if (clearFirst) texts.clear();
  if (isTextList(item)) {
    const WORD count = NSFItemGetTextListEntries(hNote_, item.c_str());
    texts.reserve(texts.size() + count);
    for (WORD index = 0; index < count; ++index) {
      TextBuffer<NOTES_ITEM_TEXT_SIZE> text;
      NSFItemGetTextListEntry(hNote_, item.c_str(), index, text.data(), NOTES_ITEM_TEXT_SIZE);
      texts.push_back(base::toWideFromLocal(text.data()));
    }
  } else if (isText(item)) {
    texts.push_back(getText(item));
  } else {
    throw NsfNoteInvalidItemType(quoted(item) + u" is not type TextList (or Text)");
  }
}

NUMBER NsfNote::getNumber(const std::string& item) const {
  if (!isNumber(item)) throw NsfNoteInvalidItemType(u"Item is not type Number.");
  NUMBER number = 0;
  if (NSFItemGetNumber(hNote_, item.c_str(), &number) == 0) throw notPresent(item);
  return number;
}

TIMEDATE NsfNote::getTime(const std::string& item) const {
  if (!isTime(item)) throw notATime(item);
  TIMEDATE time{};
  if (NSFItemGetTime(hNote_, item.c_str(), &time) == 0) throw notPresent(item);
  return time;
}

std::string NsfNote::getTimeText(const std::string& item) const {
  if (!isTime(item)) throw notATime(item);
  std::array<char, NOTES_TIME_TEXT_SIZE> text{};
  const WORD length =
      NSFItemConvertToText(hNote_, item.c_str(), text.data(), NOTES_TIME_TEXT_SIZE, listSeparator);
  if (length == 0) throw notPresent(item);
  // The one text of the library that is not terminated: its length counts.
  return {text.data(), std::min<std::size_t>(length, text.size())};
}

std::string NsfNote::getTimeTextOrEmpty(const std::string& item) const {
  return hasValue(item) ? getTimeText(item) : std::string();
}

void NsfNote::setText(const std::string& item, const std::u16string& text) {
  setTextNarrow(item, base::toUtf8(text));
}

void NsfNote::setTextNarrow(const std::string& item, const std::string& text) {
  requireWritten(NSFItemSetText(hNote_, item.c_str(), text.c_str(), lengthOf(text)));
}

void NsfNote::setNumber(const std::string& item, NUMBER number) {
  requireWritten(NSFItemSetNumber(hNote_, item.c_str(), &number));
}

void NsfNote::setTime(const std::string& item, const TIMEDATE& time) {
  requireWritten(NSFItemSetTime(hNote_, item.c_str(), &time));
}

void NsfNote::setTimeNow(const std::string& item) {
  TIMEDATE now{};
  OSCurrentTIMEDATE(&now);
  setTime(item, now);
}

void NsfNote::requireWritten(STATUS status) {
  lastStatus_ = status;
  if (status != 0) throw DominoApiError(DominoApiTools::errorText(status));
}

}  // namespace notes
