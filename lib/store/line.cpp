#include "store/line.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <nlohmann/json.hpp>

#include "store/letters.h"
#include "store/note_reader.h"

namespace store {
namespace {

using Json = nlohmann::ordered_json;

struct Malformed {};

void require(bool isWellFormed) {
  if (!isWellFormed) throw Malformed();
}

std::uint64_t hexNumber(std::string_view digits) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
  require(error == std::errc() && stop == end);
  return number;
}

std::string digitsOf(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += {digits[value >> 4U], digits[value & 0xFU]};
  }
  return text;
}

const std::string& stringOf(const Json& json) { return json.get_ref<const std::string&>(); }

// The string that is the only member of an object, under the name `name`; null if there is no such.
const std::string* onlyMember(const Json& json, const char* name) {
  if (!json.is_object() || json.size() != 1 || !json.contains(name)) return nullptr;
  return &stringOf(json.front());
}

std::string textFrom(const Json& json) {
  const std::string* digits = onlyMember(json, "bytes");
  if (digits == nullptr) return stringOf(json);
  std::optional<std::string> bytes = bytesOf(*digits);
  require(bytes.has_value());
  return *std::move(bytes);
}

Json jsonOf(const std::string& text) {
  if (isUtf8(text)) return text;
  return {{"bytes", digitsOf(text)}};
}

struct ToJson {
  Json operator()(const std::string& text) const { return jsonOf(text); }
  Json operator()(const TextList& entries) const {
    Json array = Json::array();
    for (const std::string& entry : entries) array.push_back(jsonOf(entry));
    return array;
  }
  Json operator()(double number) const { return number; }
  Json operator()(Moment moment) const { return {{"time", isoText(moment)}}; }
};

// The members of an object are those of `names` or fewer.
void requireMembers(const Json& json, std::initializer_list<std::string_view> names) {
  require(json.is_object());
  for (const auto& member : json.items())
    require(std::find(names.begin(), names.end(), member.key()) != names.end());
}

DatabaseInfo infoFrom(const Json& line) {
  requireMembers(line, {"database"});
  const Json& database = line.at("database");
  requireMembers(database, {"title", "replica"});
  const std::string_view replica = stringOf(database.at("replica"));
  require(replica.size() == 16);
  return {textFrom(database.at("title")), hexNumber(replica)};
}

}  // namespace

std::optional<DatabaseInfo> readDatabaseLine(std::string_view line) {
  if (holdsZero(line)) return std::nullopt;
  try {
    return infoFrom(Json::parse(line));
  } catch (const Malformed&) {
    return std::nullopt;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

std::optional<Note> readNoteLine(std::string_view line, NoteReader& reader) {
  return reader.read(line) ? reader.takeNote() : std::nullopt;
}

bool isTorn(std::string_view line) {
  NoteReader reader;
  return !reader.read(line) && reader.endsEarly(line.size());
}

std::string noteLine(const Note& note) {
  Json line = Json::object();
  line["note"] = note.id;
  if (note.profile.has_value()) {
    line["profile"] = jsonOf(note.profile->profile);
    line["user"] = jsonOf(note.profile->user);
  }
  // Put behind one another: to look for each name first would take the square of their number.
  Json::object_t items;
  items.reserve(note.items.size());
  for (const Item& item : note.items)
    items.emplace_back(item.name, std::visit(ToJson(), item.value));
  line["items"] = std::move(items);
  return line.dump() + '\n';
}

}  // namespace store
