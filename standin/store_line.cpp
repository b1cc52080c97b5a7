#include "store_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>

#include "status.h"
#include "text.h"
#include "time_text.h"

namespace standin {
namespace {

using Json = nlohmann::ordered_json;

struct Malformed {};

void require(bool isWellFormed) {
  if (!isWellFormed) throw Malformed();
}

template <typename Number>
Number hexNumber(std::string_view digits) {
  Number number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
  require(error == std::errc() && stop == end);
  return number;
}

std::string bytesOf(std::string_view digits) {
  require(digits.size() % 2 == 0);
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (std::size_t at = 0; at < digits.size(); at += 2)
    bytes += static_cast<char>(hexNumber<unsigned char>(digits.substr(at, 2)));
  return bytes;
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
  if (const std::string* digits = onlyMember(json, "bytes")) return bytesOf(*digits);
  return stringOf(json);
}

Json jsonOf(const std::string& text) {
  if (isUtf8(text)) return text;
  return {{"bytes", digitsOf(text)}};
}

ItemValue valueFrom(const Json& json) {
  if (json.is_number()) {
    const auto number = json.get<double>();
    require(std::isfinite(number));
    return number;
  }
  if (json.is_array()) {
    TextList entries;
    entries.reserve(json.size());
    std::transform(json.begin(), json.end(), std::back_inserter(entries), textFrom);
    return entries;
  }
  if (const std::string* text = onlyMember(json, "time")) return momentFromIso(*text);
  return textFrom(json);
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
  return {textFrom(database.at("title")),
          {{hexNumber<DWORD>(replica.substr(8)), hexNumber<DWORD>(replica.substr(0, 8))}}};
}

NOTEID idFrom(const Json& json) {
  require(json.is_number_unsigned());
  const auto id = json.get<std::uint64_t>();
  require(id > 0 && id <= std::numeric_limits<NOTEID>::max());
  return static_cast<NOTEID>(id);
}

Note noteFrom(const Json& line) {
  requireMembers(line, {"note", "profile", "user", "items"});
  Note note;
  note.id = idFrom(line.at("note"));
  if (line.contains("profile")) {
    note.profile.emplace();
    note.profile->profile = textFrom(line.at("profile"));
    require(!note.profile->profile.empty());
    if (line.contains("user")) note.profile->user = textFrom(line.at("user"));
  } else {
    require(!line.contains("user"));
  }
  const Json& items = line.at("items");
  require(items.is_object());
  for (const auto& item : items.items()) {
    require(!item.key().empty());
    note.set(item.key(), valueFrom(item.value()));
  }
  return note;
}

// The parser takes a zero byte for the end of its text.
bool hasZero(std::string_view line) { return line.find('\0') != std::string_view::npos; }

template <typename Result>
std::optional<Result> read(std::string_view line, Result (*from)(const Json&)) {
  if (hasZero(line)) return std::nullopt;
  try {
    return from(Json::parse(line));
  } catch (const Malformed&) {
    return std::nullopt;
  } catch (const Failure&) {  // of a time
    return std::nullopt;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<DatabaseInfo> readDatabaseLine(std::string_view line) { return read(line, infoFrom); }

std::optional<Note> readNoteLine(std::string_view line) { return read(line, noteFrom); }

bool isTorn(std::string_view line) {
  using Event = Json::parse_event_t;
  if (hasZero(line)) return false;
  bool isWhole = false;  // what follows a value in full is not torn off from it
  const auto watch = [&isWhole](int depth, Event event, const Json&) {
    isWhole = depth == 0 && event != Event::object_start && event != Event::array_start;
    return true;
  };
  try {
    [[maybe_unused]] const Json whole = Json::parse(line, watch);
  } catch (const Json::parse_error& error) {
    return !isWhole && error.byte > line.size();
  } catch (const Json::exception&) {  // a number that is too large
  }
  return false;
}

std::string noteLine(const Note& note) {
  Json line = Json::object();
  line["note"] = note.id;
  if (note.profile.has_value()) {
    line["profile"] = jsonOf(note.profile->profile);
    line["user"] = jsonOf(note.profile->user);
  }
  Json& items = line["items"] = Json::object();
  for (const Item& item : note.items) items[item.name] = std::visit(ToJson(), item.value);
  return line.dump() + '\n';
}

}  // namespace standin
