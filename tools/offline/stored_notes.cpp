#include "offline/stored_notes.h"

#include <nlohmann/json.hpp>

#include "offline/files.h"
#include "store/letters.h"

namespace offline {
namespace {

using Json = nlohmann::ordered_json;

StoredNote noteFrom(const Json& line) {
  StoredNote note;
  note.profile = line.value("profile", "");
  note.user = line.value("user", "");
  for (const auto& [name, value] : line.at("items").items()) {
    if (value.is_string()) note.texts.emplace(store::lowered(name), value.get<std::string>());
  }
  return note;
}

}  // namespace

const std::string& StoredNote::text(const std::string& name) const {
  static const std::string none;
  const auto found = texts.find(name);
  return found == texts.end() ? none : found->second;
}

void visitNotes(const std::filesystem::path& store,
                const std::function<void(const StoredNote&)>& visit) {
  std::ifstream input = openToRead(store);
  std::string line;
  std::getline(input, line);  // that of the database
  while (std::getline(input, line)) visit(noteFrom(Json::parse(line)));
}

std::string databaseLine(const std::string& title, const std::string& replicaId) {
  const Json line = {{"database", {{"title", title}, {"replica", replicaId}}}};
  return line.dump() + '\n';
}

}  // namespace offline
