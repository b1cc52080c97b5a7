// What the typed views on profile notes have in common: their fields and how their failures read.
#pragma once

#include <string>

#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

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

/// Runs `action`, which reads or writes the note, and raises its failures as `Error`. Reading never
/// meets a failed write, nor writing a failed read.
template <typename Error, typename Action>
void withProfileErrors(Action action) {
  try {
    action();
  } catch (const notes::NsfNote::NsfNoteError& error) {
    throw Error(u"Could not read note-item: " + error.message());
  } catch (const notes::NsfNote::DominoApiError& error) {
    throw Error(u"Could not add text item to note: " + error.message());
  } catch (const notes::NsfDbConnection::DbConnectionError& error) {
    throw Error(u"Could not open database connection: " + error.message());
  }
}

}  // namespace documents
