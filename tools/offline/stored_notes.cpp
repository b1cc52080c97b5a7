#include "offline/stored_notes.h"

#include <optional>

#include "offline/files.h"
#include "offline/messages.h"
#include "store/line.h"

namespace offline {

void visitNotes(const std::filesystem::path& store,
                const std::function<void(const store::Note&)>& visit) {
  std::ifstream input = openToRead(store);
  std::string line;
  std::getline(input, line);  // that of the database
  while (std::getline(input, line)) {
    const std::optional<store::Note> note = store::readNoteLine(line);
    if (!note.has_value()) throw Failed(store.string() + ": a line is no note");
    visit(*note);
  }
}

const std::string& textOf(const store::Note& note, std::string_view item) {
  static const std::string none;
  const auto* text = std::get_if<std::string>(note.find(item));
  return text == nullptr ? none : *text;
}

}  // namespace offline
