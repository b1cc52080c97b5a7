#include "import/export_reader.h"

#include <cstdint>

#include "import/failure.h"
#include "import/values.h"

namespace dxl {
namespace {

// A title's line in the store has room for 64 KiB, with escapes.
constexpr std::size_t longestTitle = std::size_t{32} << 10U;

DatabaseDescription descriptionFrom(const Element& element) {
  const std::string_view title = element.attribute("title");
  if (title.size() > longestTitle) throw Flaw("a title of more than 32 KiB");
  return {std::string(title), replicaIdFrom(element.attribute("replicaid"))};
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
  explicit ExportReader(Import& import) : import_(import) {}

  DatabaseDescription description() const {
    DatabaseDescription description = ofDatabaseInfo_;
    description.complete(ofRoot_);
    return description;
  }

  void start(const Element& element) override {
    ++level_;
    if (level_ == 1) return startRoot(element);
    const bool isDatabaseInfo = level_ == 2 && element.is("databaseinfo");
    if (isDatabaseInfo) ofDatabaseInfo_.complete(descriptionFrom(element));
    if (note_.has_value()) return note_->start(level_ - levelOfNote_, element);
    if (level_ == 2 && isDatabase_ && !isDatabaseInfo) startNote(element);
  }

  void text(std::string_view part) override {
    if (note_.has_value()) note_->text(level_ - levelOfNote_, part);
  }

  void end() override {
    if (note_.has_value() && level_ > levelOfNote_) note_->end(level_ - levelOfNote_);
    if (note_.has_value() && level_ == levelOfNote_) finishNote();
    --level_;
  }

 private:
  void startRoot(const Element& element) {
    ofRoot_ = descriptionFrom(element);
    isDatabase_ = element.is("database");
    if (isDatabase_) return;
    if (!element.is("note") && !noteKindOf(element).has_value())
      throw Flaw("the root element is not that of a database or a note: " +
                 std::string(element.name));
    startNote(element);
  }

  void startNote(const Element& element) {
    const std::optional<NoteKind> kind = noteKindOf(element);
    if (!kind.has_value()) {
      ++import_.totals.designElements;
      return;
    }
    note_.emplace(*kind, element, import_.zone, import_.report);
    levelOfNote_ = level_;
  }

  void finishNote() {
    const std::optional<SpooledNote> note = note_->finish();
    note_.reset();
    if (note.has_value()) {
      import_.spool.append(*note);
    } else {
      ++import_.totals.leftOut;
    }
  }

  Import& import_;
  DatabaseDescription ofRoot_;
  DatabaseDescription ofDatabaseInfo_;
  bool isDatabase_ = false;
  int level_ = 0;
  int levelOfNote_ = 0;
  std::optional<NoteReader> note_;
};

}  // namespace

void DatabaseDescription::complete(const DatabaseDescription& other) {
  if (title.empty()) title = other.title;
  if (replicaId.empty()) replicaId = other.replicaId;
}

void readExport(Descriptor& file, Import& import) {
  ExportReader reader(import);
  const std::uint64_t size = file.size();
  readXml(file, reader,
          [&](std::uint64_t done) { import.report.progress(file.path(), done, size); });
  import.database.complete(reader.description());
}

}  // namespace dxl
