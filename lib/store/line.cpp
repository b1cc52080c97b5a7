#include "store/line.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "store/json_tree.h"
#include "store/letters.h"
#include "store/status.h"

namespace store {
namespace {

struct Malformed {};

void require(bool isWellFormed) {
  if (!isWellFormed) throw Malformed();
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

std::string bytesOf(std::string_view digits) {
  require(digits.size() % 2 == 0);
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (const char* at = digits.data(); at != digits.data() + digits.size(); at += 2) {
    unsigned char byte = 0;
    require(std::from_chars(at, at + 2, byte, 16).ptr == at + 2);
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

// The content of this type. Whoever takes it apart takes it out of the tree.
template <typename Type>
Type& contentOf(Json& json) {
  auto* content = std::get_if<Type>(&json.value);
  require(content != nullptr);
  return *content;
}

bool isObject(const Json& json) { return std::holds_alternative<Json::Object>(json.value); }

std::string takeString(Json& json) { return std::move(contentOf<std::string>(json)); }

// The values of the members that an object may have, in the order of `names`; null for one that it
// lacks. Of a name that stands twice the later counts.
template <std::size_t Size>
std::array<Json*, Size> membersOf(Json& json, const std::array<std::string_view, Size>& names) {
  std::array<Json*, Size> values{};
  for (auto& [name, value] : contentOf<Json::Object>(json)) {
    const auto* const known = std::find(names.begin(), names.end(), name);
    require(known != names.end());
    values.at(static_cast<std::size_t>(known - names.begin())) = &value;
  }
  return values;
}

std::string textFrom(Json& json) {
  if (!isObject(json)) return takeString(json);
  const auto [bytes] = membersOf(json, std::array<std::string_view, 1>{"bytes"});
  require(bytes != nullptr);
  return bytesOf(takeString(*bytes));
}

ItemValue valueFrom(Json& json) {
  if (const auto* number = std::get_if<double>(&json.value)) return *number;
  if (const auto* number = std::get_if<std::uint64_t>(&json.value))
    return static_cast<double>(*number);
  if (auto* array = std::get_if<Json::Array>(&json.value)) {
    TextList entries;
    entries.reserve(array->size());
    for (Json& entry : *array) entries.push_back(textFrom(entry));
    return entries;
  }
  if (!isObject(json)) return takeString(json);
  const auto [time, bytes] = membersOf(json, std::array<std::string_view, 2>{"time", "bytes"});
  require((time == nullptr) != (bytes == nullptr));
  if (time == nullptr) return bytesOf(takeString(*bytes));
  return momentFromIso(takeString(*time));
}

// Of the items of one name the first gives the place and the last the value. Each name goes into
// the first free slot from that of its hash on; half of the slots stay free.
std::vector<Item> itemsFrom(Json& json) {
  constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
  auto& members = contentOf<Json::Object>(json);
  const std::size_t mask = std::bit_ceil(2 * members.size() + 1) - 1;
  std::vector<std::size_t> slots(mask + 1, none);
  std::vector<Item> items;
  std::vector<Json*> values;
  items.reserve(members.size());
  values.reserve(members.size());
  for (auto& [name, value] : members) {
    require(!name.empty());
    std::size_t slot = hashOfName(name) & mask;
    while (slots[slot] != none && !equalNames(items[slots[slot]].name, name))
      slot = (slot + 1) & mask;
    if (slots[slot] == none) {
      slots[slot] = items.size();
      items.push_back({std::move(name), {}});
      values.push_back(nullptr);
    }
    values[slots[slot]] = &value;
  }
  for (std::size_t i = 0; i < items.size(); ++i) items[i].value = valueFrom(*values[i]);
  return items;
}

Note noteFrom(Json& line) {
  const auto [id, profile, user, items] =
      membersOf(line, std::array<std::string_view, 4>{"note", "profile", "user", "items"});
  require(id != nullptr && items != nullptr);
  const std::uint64_t number = contentOf<std::uint64_t>(*id);
  require(number != 0 && number <= std::numeric_limits<std::uint32_t>::max());
  require(profile != nullptr || user == nullptr);
  Note note;
  note.id = static_cast<std::uint32_t>(number);
  if (profile != nullptr) {
    note.profile = {textFrom(*profile), user == nullptr ? std::string() : textFrom(*user)};
    require(!note.profile->profile.empty());
  }
  note.items = itemsFrom(*items);
  return note;
}

DatabaseInfo infoFrom(Json& line) {
  const auto [database] = membersOf(line, std::array<std::string_view, 1>{"database"});
  require(database != nullptr);
  const auto [title, replica] =
      membersOf(*database, std::array<std::string_view, 2>{"title", "replica"});
  require(title != nullptr && replica != nullptr);
  const std::optional<std::uint64_t> replicaId = replicaIdFrom(takeString(*replica));
  require(replicaId.has_value());
  return {textFrom(*title), *replicaId};
}

// What `read` makes of a line, or nothing.
template <typename Result>
std::optional<Result> readLine(std::string_view line, Result (*read)(Json&)) {
  TreeMaker tree;
  if (!tree.read(line)) return std::nullopt;
  try {
    return read(tree.root());
  } catch (const Malformed&) {
    return std::nullopt;
  } catch (const Failure&) {  // a time that is none
    return std::nullopt;
  }
}

void append(std::string& line, const std::string& text) {
  if (isUtf8(text))
    line += nlohmann::json(text).dump();
  else
    line.append(R"({"bytes":")").append(digitsOf(text)).append("\"}");
}

void append(std::string& line, const TextList& entries) {
  line += '[';
  for (const std::string& entry : entries) {
    if (&entry != entries.data()) line += ',';
    append(line, entry);
  }
  line += ']';
}

void append(std::string& line, double number) { line += nlohmann::json(number).dump(); }

void append(std::string& line, Moment moment) {
  line.append(R"({"time":")").append(isoText(moment)).append("\"}");
}

}  // namespace

std::optional<std::uint64_t> replicaIdFrom(std::string_view digits) {
  constexpr std::size_t size = 16;
  std::uint64_t id = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, id, 16);
  if (digits.size() != size || error != std::errc() || stop != end) return std::nullopt;
  return id;
}

std::optional<DatabaseInfo> readDatabaseLine(std::string_view line) {
  return readLine(line, infoFrom);
}

std::optional<Note> readNoteLine(std::string_view line) { return readLine(line, noteFrom); }

bool isTorn(std::string_view line) {
  TreeMaker tree;
  return !tree.read(line) && tree.endsEarly(line.size());
}

std::string databaseLine(const DatabaseInfo& database) {
  std::array<char, 17> replica{};
  const int length =
      std::snprintf(replica.data(), replica.size(), "%016" PRIX64, database.replicaId);
  std::string line = R"({"database":{"title":)";
  append(line, database.title);
  line.append(R"(,"replica":")").append(replica.data(), static_cast<std::size_t>(length));
  return line.append("\"}}\n");
}

std::string noteLine(const Note& note) {
  std::string line = R"({"note":)" + std::to_string(note.id);
  if (note.profile.has_value()) {
    append(line += R"(,"profile":)", note.profile->profile);
    append(line += R"(,"user":)", note.profile->user);
  }
  line += R"(,"items":{)";
  for (const Item& item : note.items) {
    if (&item != note.items.data()) line += ',';
    append(line, item.name);
    line += ':';
    std::visit([&line](const auto& value) { append(line, value); }, item.value);
  }
  return line += "}}\n";
}

}  // namespace store
