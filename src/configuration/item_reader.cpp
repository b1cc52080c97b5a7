#include "configuration/item_reader.h"

namespace configuration {

using notes::NsfNote;

void ItemReader::readText(const std::string& item, const std::u16string& fallback,
                          std::u16string& destination, const std::u16string& label) {
  try {
    destination = note_.hasValue(item) ? note_.getText(item) : fallback;
  } catch (const NsfNote::NsfNoteError&) {
    destination = fallback;
  }
  addRow(label, destination);
}

void ItemReader::readChoice(const std::string& item, bool fallback, bool& destination,
                            const std::u16string& label, const Choice& choice) {
  destination = fallback;
  try {
    if (note_.hasValue(item)) {
      const std::u16string text = note_.getText(item);
      if (text == choice.on) {
        destination = true;
      } else if (text == choice.off) {
        destination = false;
      }
    }
  } catch (const NsfNote::NsfNoteError&) {
    // The default stands already.
  }
  addRow(label, destination ? u"Yes" : u"No");
}

void ItemReader::readList(const std::string& item, std::vector<std::u16string>& destination,
                          const std::u16string& label) {
  destination.clear();
  try {
    if (note_.hasValue(item)) note_.getTextList(item, destination, true);
  } catch (const NsfNote::NsfNoteError&) {
    destination.clear();
  }
  addRow(label, listed(destination));
}

void ItemReader::addRow(const std::u16string& label, const std::u16string& value) {
  rows_.push_back({label, value});
}

std::u16string listed(const std::vector<std::u16string>& texts) {
  std::u16string text;
  for (const std::u16string& part : texts) {
    if (&part != &texts.front()) text += u", ";
    text += part;
  }
  return text;
}

}  // namespace configuration
