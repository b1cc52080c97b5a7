#include "notes_ini.h"

#include <fstream>

#include "status.h"
#include "text.h"

namespace standin {

NotesIni NotesIni::read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  NotesIni settings(file);
  // A folder may open like a file and fail at the first read.
  if (!file.is_open() || file.bad()) throw Failure(Status::settingsUnreadable);
  return settings;
}

NotesIni::NotesIni(std::istream& lines) {
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const std::size_t mark = line.find('=');
    if (mark == std::string::npos || mark == 0) continue;
    values_.try_emplace(lowered(line.substr(0, mark)), line.substr(mark + 1));
  }
}

const std::string* NotesIni::find(std::string_view name) const {
  const auto found = values_.find(lowered(name));
  return found == values_.end() ? nullptr : &found->second;
}

std::string NotesIni::valueOrEmpty(std::string_view name) const {
  const std::string* value = find(name);
  return value == nullptr ? std::string() : *value;
}

}  // namespace standin
