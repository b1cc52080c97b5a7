#include "report/section_content.h"

#include <algorithm>

#include "report/lines.h"

namespace reader {
namespace {

std::vector<Target> targetsOf(Section section) {
  switch (section) {
    case Section::systemEnvironment:
      return {Target::variables};
    case Section::dominoEnvironmentVariables:
      return {Target::checks};
    case Section::fileCheck:
      return {Target::files};
    case Section::customerProfile:
    case Section::serverProfile:
      return {Target::fields};
    case Section::filteredUsers:
    case Section::access:
      return {Target::itself};
    case Section::configuration:
      return {Target::rows};
    case Section::senderFilter:
      return {Target::filters};
    case Section::loadingDirectory:
      return {Target::books, Target::messages, Target::result, Target::importMessages};
    case Section::importing:
      return {Target::books, Target::messages, Target::entries, Target::result,
              Target::importMessages};
    case Section::installedUpdates:
      return {Target::updates};
    case Section::events:
      return {Target::events};
    default:
      return {};
  }
}

bool isError(const Reading& reading) {
  return reading.match.form != nullptr && reading.match.form->target == Target::error;
}

// The label of a row stands in front of its dots.
std::string_view trimmedLabel(std::string_view label) {
  return label.substr(0, label.find_last_not_of(' ') + 1);
}

// A later value of a key counts.
void addValues(Object& object, const Match& match) {
  for (Value value : match.all()) {
    if (value.key.empty()) continue;
    if (match.form->target == Target::rows && value.key == "label")
      value.text = trimmedLabel(value.text);
    const auto same = std::ranges::find(object, value.key, &Value::key);
    if (same == object.end()) {
      object.push_back(value);
    } else {
      *same = value;
    }
  }
}

}  // namespace

std::string timeOf(const Entry& entry) {
  constexpr std::size_t size = 14;
  std::string text = std::to_string(entry.time);
  text.insert(0, size - text.size(), '0');
  return text.insert(12, ":").insert(10, ":").insert(8, "T").insert(6, "-").insert(4, "-");
}

std::string_view textOf(const Object& object, std::string_view key) {
  const auto found = std::ranges::find(object, key, &Value::key);
  return found == object.end() ? std::string_view() : found->text;
}

SectionContent::SectionContent(const Report& report, std::span<const EntryNumber> entries)
    : report_(report), entries_(entries) {
  forEach([&](const Reading& reading) {
    if (reading.match.form != nullptr) {
      std::size_t& count = counts_.at(static_cast<std::size_t>(reading.match.form->target));
      if (count == 0 || reading.match.form->rank == 0) ++count;
    }
    if (reading.isOther() || (isError(reading) && error_)) ++otherCount_;
    if (isError(reading) && !error_) error_ = reading.text;
  });
}

std::vector<Target> SectionContent::targets() const {
  std::vector<Target> targets = targetsOf(section());
  if (error_) std::erase_if(targets, [this](Target target) { return count(target) == 0; });
  return targets;
}

Object SectionContent::object(Target target) const {
  Object object;
  forEach(target, [&](const Reading& reading) { addValues(object, reading.match); });
  return object;
}

void SectionContent::forEachObject(Target target,
                                   const std::function<void(const Object&)>& take) const {
  std::optional<Object> object;
  forEach(target, [&](const Reading& reading) {
    if (reading.match.form->rank == 0) {
      if (object) take(*object);
      object.emplace();
    }
    if (!object) object.emplace();
    addValues(*object, reading.match);
  });
  if (object) take(*object);
}

void SectionContent::forEachMessage(Target target,
                                    const std::function<void(std::string_view)>& take) const {
  forEach(target, [&](const Reading& reading) { take(withoutTabs(reading.text)); });
}

void SectionContent::forEachOther(const std::function<void(std::string_view)>& take) const {
  bool hadError = false;
  forEach([&](const Reading& reading) {
    if (reading.isOther() || (isError(reading) && hadError)) take(reading.text);
    hadError = hadError || isError(reading);
  });
}

void SectionContent::forEach(const std::function<void(const Reading&)>& take) const {
  for (const EntryNumber number : entries_) {
    EntryReader reader(report_, number);
    for (Reading reading{}; reader.next(reading);) take(reading);
  }
}

void SectionContent::forEach(Target target, const std::function<void(const Reading&)>& take) const {
  forEach([&](const Reading& reading) {
    if (reading.match.form != nullptr && reading.match.form->target == target) take(reading);
  });
}

std::optional<std::string> startOf(const Report& report, const Run& run) {
  for (const EntryNumber number : run.entries) {
    const Entry& entry = report.entries()[number];
    if (entry.section == Section::startingLog) return timeOf(entry);
  }
  return std::nullopt;
}

}  // namespace reader
