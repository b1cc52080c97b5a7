// What the typed views on profile notes have in common: their fields.
#pragma once

#include <initializer_list>
#include <string>

#include "base/text.h"
#include "notes/nsf_note.h"

namespace documents {

/// How far the lines of a profile's section are indented in the report.
inline constexpr int profileDepth = 5;

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

/// Sets the items of the fields that were changed. Raises NsfNote::DominoApiError.
inline void setChanged(notes::NsfNote& note, std::initializer_list<ProfileField*> fields) {
  for (const ProfileField* const field : fields) {
    if (field->changed) note.setText(field->item, field->value);
  }
}

/// To be called once the note is written.
inline void forgetChanges(std::initializer_list<ProfileField*> fields) {
  for (ProfileField* const field : fields) field->changed = false;
}

/// Appends a line that shows a field: `depth` tabs, the label, and the value in brackets.
inline void appendField(std::u16string& text, int depth, const char16_t* label,
                        const ProfileField& field) {
  text.append(base::newLine(static_cast<unsigned>(depth)))
      .append(label)
      .append(u"(")
      .append(field.value)
      .append(u")");
}

}  // namespace documents
