#include "import/item_reader.h"

#include <utility>

#include "import/values.h"

namespace dxl {
namespace {

constexpr std::string_view malformed = "malformed";

}  // namespace

ItemReader::ItemReader(std::string name, std::size_t mostBytes, std::chrono::hours zone)
    : name_(std::move(name)), mostBytes_(mostBytes), zone_(zone), bytes_(name_.size()) {}

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
  const bool isInText = level == levelOfTexts() + 1;
  if (isFigure())
    leftOutAs_ = malformed;
  else if (isInText && element.is("break"))
    append("\n");
  else if (isInText && element.is("nonxmlchar"))
    appendNumbered(element.attribute("value"));
  else if (level != levelOfTexts() || !element.is("text"))
    leftOutAs_ = valueName_;
}

void ItemReader::startValue(const Element& element) {
  if (++values_ > 1) return;
  kind_ = kindOf(element);
  valueName_ = element.name;
  if (kind_ == Kind::other || name_.empty()) leftOutAs_ = valueName_;
}

void ItemReader::text(int level, std::string_view part) {
  if (values_ == 1 && level == levelOfTexts() && isWanted()) append(part);
}

// The text of a number or time is not kept, so that it does not count; but it has an end.
void ItemReader::append(std::string_view part) {
  text_ += part;
  if (!isFigure()) bytes_ += part.size();
  if (isFigure() ? text_.size() <= largestPart : bytes_ <= mostBytes_) return;
  text_ = {};
  list_ = {};
  if (isFigure()) leftOutAs_ = malformed;
}

void ItemReader::appendNumbered(std::string_view digits) {
  const std::optional<std::string> character = characterFrom(digits);
  if (!character.has_value())
    leftOutAs_ = malformed;
  else if (character->empty())
    leftOutAs_ = valueName_;
  else
    append(*character);
}

void ItemReader::end(int level) {
  if (kind_ != Kind::textList || level != 2 || values_ != 1 || !isWanted()) return;
  bytes_ += 2;  // so that empty entries have an end as well
  if (bytes_ <= mostBytes_)
    list_.push_back(std::exchange(text_, {}));
  else
    list_ = {};
}

ItemOutcome ItemReader::finish() {
  const auto leftOut = [](std::string_view as) { return ItemOutcome{{}, 0, std::string(as)}; };
  if (values_ == 0) return leftOut("empty");
  if (values_ > 1) return leftOut("several");
  if (!isWanted()) return leftOut(leftOutAs_);
  std::optional<store::ItemValue> kept = value();
  if (!kept.has_value()) return leftOut(malformed);
  return {std::move(*kept), bytes_, {}};
}

// Nothing if it is malformed.
std::optional<store::ItemValue> ItemReader::value() {
  if (kind_ == Kind::text) return std::move(text_);
  if (kind_ == Kind::textList) return std::move(list_);
  if (kind_ == Kind::number) return numberFrom(text_);
  return momentFrom(text_, zone_);
}

}  // namespace dxl
