#include "import/export_reader.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "import/exported_note.h"
#include "import/failure.h"
#include "import/xml_reader.h"

namespace dxl {
namespace {

// A title's line in the store has room for 64 KiB, with escapes.
constexpr std::size_t longestTitle = std::size_t{32} << 10U;

store::DatabaseInfo databaseOf(const Element& element) {
  const std::string_view title = element.attribute("title");
  if (title.size() > longestTitle) throw Flaw("a title of more than 32 KiB");
  return {std::string(title), store::replicaIdFrom(element.attribute("replicaid")).value_or(0)};
}

// Takes what is missing from another.
void complete(store::DatabaseInfo& database, const store::DatabaseInfo& other) {
  if (database.title.empty()) database.title = other.title;
  if (database.replicaId == 0) database.replicaId = other.replicaId;
}

// Nothing for a design element.
std::optional<NoteKind> noteKindOf(const Element& element) {
  if (element.is("document")) return NoteKind::document;
  if (element.is("profiledocument")) return NoteKind::profile;
  if (element.is("note") && element.attribute("class") == "document") return NoteKind::rawDocument;
  return std::nullopt;
}

class ExportReader : public ElementHandler {
 public:
  explicit ExportReader(Reading& reading) : reading_(reading) {}

  void start(const Element& element) override {
    ++level_;
    if (level_ == 1) return startRoot(element);
    const bool isDatabaseInfo = level_ == 2 && element.is("databaseinfo");
    if (isDatabaseInfo) complete(ofDatabaseInfo_, databaseOf(element));
    if (note_.has_value()) return note_->start(level_ - levelOfNote_, element);
    if (level_ == 2 && isDatabase_ && !isDatabaseInfo) startNote(element);
  }

  void text(std::string_view part) override {
    if (note_.has_value()) note_->text(level_ - levelOfNote_, part);
  }

  void end() override {
    if (note_.has_value() && level_ > levelOfNote_) note_->end(level_ - levelOfNote_);
    if (note_.has_value() && level_ == levelOfNote_) finishNote();
    if (--level_ > 0) return;
    complete(ofDatabaseInfo_, ofRoot_);
    const std::uint64_t known = reading_.database.replicaId;
    reading_.totals.hasOtherReplica |=
        known != 0 && ofDatabaseInfo_.replicaId != 0 && ofDatabaseInfo_.replicaId != known;
    complete(reading_.database, ofDatabaseInfo_);
  }

 private:
  void startRoot(const Element& element) {
    ofRoot_ = databaseOf(element);
    isDatabase_ = element.is("database");
    if (isDatabase_) return;
    const std::string name(element.name);
    if (!element.isOfExports)
      throw Flaw("this is XML of something else, ask for an export of Domino (DXL): " + name);
    if (!element.is("note") && !noteKindOf(element).has_value())
      throw Flaw("the root element is not that of a database or a note: " + name);
    startNote(element);
  }

  void startNote(const Element& element) {
    const std::optional<NoteKind> kind = noteKindOf(element);
    if (!kind.has_value()) {
      ++reading_.totals.designElements;
      return;
    }
    note_.emplace(*kind, element, reading_.zone, reading_.leftOut);
    levelOfNote_ = level_;
  }

  void finishNote() {
    Totals& totals = reading_.totals;
    store::Note* const note = note_->finish();
    if (note != nullptr && reading_.strip) totals.stripped += reading_.strip(*note);
    if (note == nullptr) {
      ++totals.leftOut;
      ++totals.profilesInNoteForm;
    } else if (reading_.take(*note)) {
      ++(note->profile.has_value() ? totals.profiles : totals.notes);
      totals.itemsKept += note->items.size();
      totals.leftOut += note_->itemsLeftOut();
    }
    note_.reset();
  }

  Reading& reading_;
  store::DatabaseInfo ofRoot_;
  store::DatabaseInfo ofDatabaseInfo_;
  bool isDatabase_ = false;
  int level_ = 0;
  int levelOfNote_ = 0;
  std::optional<ExportedNote> note_;
};

}  // namespace

void readExport(ExportFile& file, Reading& reading, Report& progress) {
  ExportReader reader(reading);
  const std::uint64_t size = std::max<std::uint64_t>(file.state().size, 1);
  readXml(file, reader, [&](std::uint64_t done) { progress.progress(file.path(), done, size); });
}

}  // namespace dxl
