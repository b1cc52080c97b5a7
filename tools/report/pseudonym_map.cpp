#include "report/pseudonym_map.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "report/text.h"

namespace reader {
namespace {

using Json = nlohmann::json;

constexpr std::array<const char*, pseudonymKinds> kindNames = {
    "organization", "person", "mail", "domain", "server", "replica-id", "path", "text"};

[[noreturn]] void fail() { throw BadMap("it is no map of pseudonyms"); }

MaskKind kindNamed(const std::string& name) {
  const auto found = std::ranges::find(kindNames, name);
  if (found == kindNames.end()) fail();
  return static_cast<MaskKind>(found - kindNames.begin());
}

std::uint32_t numberIn(const Json& json) {
  if (!json.is_number_unsigned()) fail();
  const auto number = json.get<std::uint64_t>();
  if (number == 0 || number > UINT32_MAX) fail();
  return static_cast<std::uint32_t>(number);
}

const Json& member(const Json& json, const char* name) {
  if (!json.is_object() || !json.contains(name)) fail();
  return json[name];
}

}  // namespace

PseudonymMap::PseudonymMap(std::string_view json) {
  if (json.empty()) return;
  const Json map = Json::parse(json, nullptr, false);
  if (member(map, "format") != Json(1) || !member(map, "values").is_object()) fail();
  for (const auto& [name, values] : map["values"].items()) {
    const MaskKind kind = kindNamed(name);
    if (!values.is_object()) fail();
    std::set<std::uint32_t> numbers;
    for (const auto& [value, number] : values.items()) {
      const std::string bytes = toLatin1(value);
      if (bytes.empty() || !numbers.insert(numberIn(number)).second) fail();
      all_.push_back({kind, numberIn(number), values_.emplace_back(bytes)});
    }
  }
}

std::string asMap(const std::deque<Pseudonym>& pseudonyms) {
  std::array<std::string, pseudonymKinds> parts;
  for (const Pseudonym& pseudonym : pseudonyms) {
    std::string& part = parts.at(static_cast<std::size_t>(pseudonym.kind));
    part += part.empty() ? "" : ",\n";
    part += Json(latin1ToUtf8(pseudonym.value)).dump() + ":" + std::to_string(pseudonym.number);
  }
  std::string map = R"({"format":1,"values":{)";
  const char* separator = "\n";
  for (std::size_t kind = 0; kind < parts.size(); ++kind) {
    if (parts.at(kind).empty()) continue;
    map.append(separator).append("\"").append(kindNames.at(kind)).append("\":{\n");
    map.append(parts.at(kind)).append("}");
    separator = ",\n";
  }
  return map + "}}\n";
}

}  // namespace reader
