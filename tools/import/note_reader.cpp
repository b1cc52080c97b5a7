#include "import/note_reader.h"

#include "import/failure.h"
#include "import/json_text.h"
#include "import/values.h"
#include "store/letters.h"

namespace dxl {
namespace {

// What is said of a note waits for its end, where it may be left out as a whole; but not for ever.
constexpr std::size_t mostLeftOutBytes = std::size_t{1} << 20U;

constexpr std::string_view formName = "form";

void appendMember(std::string& members, const std::string& name, const std::string& json) {
  if (!members.empty()) members += ',';
  members += jsonText(name) + ':' + json;
}

// Of a text, or of the first entry of a list.
bool isNameOfProfile(std::string_view json) {
  return json.starts_with(R"("$profile)") || json.starts_with(R"(["$profile)");
}

}  // namespace

NoteReader::NoteReader(NoteKind kind, const Element& element, std::chrono::hours zone,
                       Report& report)
    : kind_(kind), report_(report), item_(zone) {
  if (kind == NoteKind::profile) beginProfile(element);
  const std::string form(element.attribute(formName));
  if (kind == NoteKind::document && !form.empty()) keep("Form", jsonText(form), 4 + form.size());
}

void NoteReader::beginProfile(const Element& element) {
  const std::string name(element.attribute("name"));
  const std::string user(element.attribute("username"));
  if (name.empty()) throw Flaw("a profile without a name");
  count(name.size() + user.size());
  note_.profileKey = store::lowered(name) + '\0' + store::lowered(user);
  note_.members = R"(,"profile":)" + jsonText(name) + R"(,"user":)" + jsonText(user);
}

void NoteReader::count(std::size_t bytes) {
  bytes_ += bytes;
  if (bytes_ > largestPart) throw Flaw("a note with more than 16 MiB of names and texts");
}

void NoteReader::start(int level, const Element& element) {
  if (level > 1) {
    if (isInItem_) item_.start(level - 1, element);
  } else if (element.is("item")) {
    beginItem(element.attribute("name"));
  } else if (element.is("noteinfo") && !hasNoteInfo_) {
    hasNoteInfo_ = true;
    note_.id = noteIdFrom(element.attribute("noteid"));
  }
}

void NoteReader::text(int level, std::string_view part) {
  if (isInItem_ && level > 1) item_.text(level - 1, part);
}

void NoteReader::end(int level) {
  if (!isInItem_) return;
  if (level > 1) return item_.end(level - 1);
  finishItem();
  isInItem_ = false;
}

void NoteReader::beginItem(std::string_view name) {
  isInItem_ = true;
  if (isProfileInNoteForm_ || keptNames_.contains(store::lowered(name))) {
    item_.beginLeftOut(std::string(name), "repeated");
  } else {
    item_.begin(std::string(name), largestPart - bytes_);
  }
}

void NoteReader::finishItem() {
  ItemOutcome outcome = item_.finish();
  if (outcome.leftOutAs.empty()) {
    keep(item_.name(), outcome.json, outcome.bytes);
  } else {
    leaveOut(item_.name(), std::move(outcome.leftOutAs));
  }
}

void NoteReader::keep(const std::string& name, const std::string& json, std::size_t bytes) {
  count(bytes);
  const std::string lowered = store::lowered(name);
  const bool isForm = kind_ != NoteKind::profile && lowered == formName;
  appendMember(isForm ? form_ : items_, name, json);
  ++note_.itemsKept;
  if (kind_ == NoteKind::rawDocument && lowered == "$name" && isNameOfProfile(json))
    isProfileInNoteForm_ = true;
  keptNames_.insert(lowered);
}

void NoteReader::leaveOut(std::string name, std::string type) {
  if (isProfileInNoteForm_) return;
  ++note_.itemsLeftOut;
  leftOutBytes_ += sizeof(LeftOut) + name.size() + type.size();
  leftOut_.push_back({std::move(name), std::move(type)});
  if (leftOutBytes_ > mostLeftOutBytes) reportLeftOut();
}

void NoteReader::reportLeftOut() {
  for (const LeftOut& item : leftOut_) report_.itemLeftOut(note_.id, item.name, item.type);
  leftOut_.clear();
  leftOutBytes_ = 0;
}

std::optional<SpooledNote> NoteReader::finish() {
  if (isProfileInNoteForm_) {
    report_.profileFormLeftOut(note_.id);
    return std::nullopt;
  }
  reportLeftOut();
  note_.members += R"(,"items":{)" + form_;
  if (!form_.empty() && !items_.empty()) note_.members += ',';
  note_.members += items_ + "}}";
  return std::move(note_);
}

}  // namespace dxl
