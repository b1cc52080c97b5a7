// What the typed views on profile notes have in common: their fields.
#pragma once

#include <string>

namespace documents {

/// A text item of the note, and whether a setter has changed it since it was written.
struct ProfileField {
  const char* item;
  std::u16string value{};
  bool changed = false;

  void set(const std::u16string& newValue) {
    value = newValue;
    changed = true;
  }
};

/// Appends a line that shows a field: `depth` tabs, the label, and the value in brackets.
inline void appendField(std::u16string& text, int depth, const char16_t* label,
                        const ProfileField& field) {
  text.append(u"\n").append(static_cast<std::size_t>(depth), u'\t');
  text.append(label).append(u"(").append(field.value).append(u")");
}

}  // namespace documents
