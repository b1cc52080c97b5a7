#include "import/exported_note.h"

#include <utility>

#include "import/failure.h"
#include "import/values.h"
#include "store/letters.h"

namespace dxl {
namespace {

// What is said of a note waits for its end, where it may be left out as a whole; but not for ever.
constexpr std::size_t mostLeftOutBytes = std::size_t{1} << 20U;

constexpr std::string_view formName = "Form";

bool isNameOfProfile(const store::ItemValue& value) {
  const auto texts = store::textsOf(&value);
  return !texts.empty() && texts.front().starts_with("$profile");
}

}  // namespace

ExportedNote::ExportedNote(NoteKind kind, const Element& element, std::chrono::hours zone,
                           Report* report)
    : kind_(kind), zone_(zone), report_(report) {
  if (kind == NoteKind::profile) beginProfile(element);
  std::string form(element.attribute("form"));
  if (kind != NoteKind::document || form.empty()) return;
  count(formName.size() + form.size());
  keep(std::string(formName), std::move(form));
}

void ExportedNote::beginProfile(const Element& element) {
  note_.profile = {std::string(element.attribute("name")),
                   std::string(element.attribute("username"))};
  if (note_.profile->profile.empty()) throw Flaw("a profile without a name");
  count(note_.profile->profile.size() + note_.profile->user.size());
}

void ExportedNote::count(std::size_t bytes) {
  bytes_ += bytes;
  if (bytes_ > largestPart) throw Flaw("a note with more than 16 MiB of names and texts");
}

void ExportedNote::start(int level, const Element& element) {
  if (level > 1) {
    if (item_.has_value()) item_->start(level - 1, element);
  } else if (element.is("item")) {
    beginItem(element.attribute("name"));
  } else if (element.is("noteinfo") && !hasNoteInfo_) {
    hasNoteInfo_ = true;
    note_.id = noteIdFrom(element.attribute("noteid"));
  }
}

void ExportedNote::text(int level, std::string_view part) {
  if (item_.has_value() && level > 1) item_->text(level - 1, part);
}

void ExportedNote::end(int level) {
  if (!item_.has_value()) return;
  if (level > 1) return item_->end(level - 1);
  ItemOutcome outcome = item_->finish();
  if (outcome.leftOutAs.empty()) {
    count(outcome.bytes);
    keep(item_->name(), std::move(outcome.value));
  } else {
    leaveOut(item_->name(), std::move(outcome.leftOutAs));
  }
  item_.reset();
}

void ExportedNote::beginItem(std::string_view name) {
  if (isProfileInNoteForm_) return;
  if (keptNames_.contains(store::lowered(name)))
    leaveOut(std::string(name), "repeated");
  else
    item_.emplace(std::string(name), largestPart - bytes_, zone_);
}

void ExportedNote::keep(const std::string& name, store::ItemValue value) {
  isProfileInNoteForm_ =
      kind_ == NoteKind::rawDocument && store::equalNames(name, "$name") && isNameOfProfile(value);
  const bool isForm = kind_ != NoteKind::profile && store::equalNames(name, formName);
  auto& items = note_.items;
  items.insert(isForm ? items.begin() : items.end(), {name, std::move(value)});
  keptNames_.insert(store::lowered(name));
}

void ExportedNote::leaveOut(const std::string& name, std::string type) {
  ++itemsLeftOut_;
  if (report_ == nullptr) return;
  leftOutBytes_ += sizeof(LeftOut) + name.size() + type.size();
  leftOut_.push_back({name, std::move(type)});
  if (leftOutBytes_ > mostLeftOutBytes) reportLeftOut();
}

void ExportedNote::reportLeftOut() {
  for (const LeftOut& item : leftOut_) report_->itemLeftOut(note_.id, item.name, item.type);
  leftOut_.clear();
  leftOutBytes_ = 0;
}

store::Note* ExportedNote::finish() {
  if (!isProfileInNoteForm_) {
    reportLeftOut();
    return &note_;
  }
  if (report_ != nullptr) report_->profileFormLeftOut(note_.id);
  return nullptr;
}

}  // namespace dxl
