#include "import/item_reader.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "import/failure.h"
#include "import/json_text.h"
#include "import/values.h"
#include "store/moment.h"

namespace dxl {
namespace {

constexpr std::string_view malformed = "malformed";

}  // namespace

void ItemReader::begin(std::string name, std::size_t mostBytes) {
  name_ = std::move(name);
  valueName_.clear();
  leftOutAs_.clear();
  text_.clear();
  list_.clear();
  isRefused_ = false;
  values_ = 0;
  bytes_ = name_.size();
  mostBytes_ = mostBytes;
}

void ItemReader::beginLeftOut(std::string name, std::string_view word) {
  begin(std::move(name), 0);
  leftOutAs_ = word;
  isRefused_ = true;
}

ItemReader::Kind ItemReader::kindOf(const Element& element) {
  if (element.is("text")) return Kind::text;
  if (element.is("textlist")) return Kind::textList;
  if (element.is("number")) return Kind::number;
  if (element.is("datetime")) return Kind::time;
  return Kind::other;
}

void ItemReader::start(int level, const Element& element) {
  if (level == 1) return startValue(element);
  if (!isWanted()) return;
  if (kind_ == Kind::text) return startInText(level - 1, element);
  if (kind_ == Kind::textList && level > 2) return startInText(level - 2, element);
  if (kind_ == Kind::textList) {
    if (!element.is("text")) leftOutAs_ = valueName_;
    return;
  }
  leftOutAs_ = malformed;
}

void ItemReader::startValue(const Element& element) {
  if (++values_ > 1 || !isWanted()) return;
  kind_ = kindOf(element);
  valueName_ = element.name;
  if (kind_ == Kind::other || name_.empty()) leftOutAs_ = valueName_;
}

// `level` is 1 for an element that stands in a text itself.
void ItemReader::startInText(int level, const Element& element) {
  if (level == 1 && element.is("break")) return append("\n");
  if (level == 1 && element.is("nonxmlchar")) return appendNumbered(element.attribute("value"));
  leftOutAs_ = valueName_;
}

void ItemReader::text(int level, std::string_view part) {
  if (values_ == 1 && level == (kind_ == Kind::textList ? 2 : 1) && isWanted()) append(part);
}

void ItemReader::append(std::string_view part) {
  if (kind_ == Kind::number || kind_ == Kind::time) return appendToFigure(part);
  bytes_ += part.size();
  if (bytes_ <= mostBytes_) {
    text_ += part;
  } else {
    text_ = {};
    list_ = {};
  }
}

// The text of a number or time is not kept, so that it does not count; but it has an end.
void ItemReader::appendToFigure(std::string_view part) {
  text_ += part;
  if (text_.size() <= largestPart) return;
  text_ = {};
  leftOutAs_ = malformed;
}

void ItemReader::appendNumbered(std::string_view digits) {
  const std::optional<std::uint32_t> number = characterNumberFrom(digits);
  std::string character;
  if (!number.has_value()) {
    leftOutAs_ = malformed;
  } else if (appendCharacter(character, *number)) {
    append(character);
  } else {
    leftOutAs_ = valueName_;
  }
}

void ItemReader::end(int level) {
  if (kind_ != Kind::textList || level != 2 || values_ != 1 || !isWanted()) return;
  if (bytes_ > mostBytes_) return;
  list_ += list_.empty() ? '[' : ',';
  list_ += jsonText(std::exchange(text_, {}));
}

ItemOutcome ItemReader::finish() {
  if (values_ == 0 && !isRefused_) return {{}, 0, "empty"};
  if (values_ > 1 && !isRefused_) return {{}, 0, "several"};
  if (!isWanted()) return {{}, 0, leftOutAs_};
  std::string json = valueAsJson();
  if (json.empty()) return {{}, 0, std::string(malformed)};
  if (bytes_ > mostBytes_) throw Flaw("a note with more than 16 MiB of names and texts");
  return {std::move(json), bytes_, {}};
}

// Empty if it is malformed.
std::string ItemReader::valueAsJson() {
  if (kind_ == Kind::textList) return list_.empty() ? "[]" : std::move(list_) + ']';
  if (kind_ == Kind::text) return jsonText(std::move(text_));
  if (kind_ == Kind::number) {
    const std::optional<double> number = numberFrom(text_);
    return number.has_value() ? jsonNumber(*number) : std::string();
  }
  const std::optional<store::Moment> moment = momentFrom(text_, zone_);
  return moment.has_value() ? R"({"time":")" + store::isoText(*moment) + "\"}" : std::string();
}

}  // namespace dxl
