// One note of an export as a store has it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "import/item_reader.h"
#include "import/report.h"
#include "import/xml_reader.h"
#include "store/note.h"

namespace dxl {

enum class NoteKind { document, profile, rawDocument };

class ExportedNote {
 public:
  /// Begins a note with its element. Items that are left out are reported, unless `report` is null.
  /// Throws Flaw for a profile without a name.
  ExportedNote(NoteKind kind, const Element& element, std::chrono::hours zone, Report* report);

  /// Elements and texts within the note; `level` is that of the element, from 1, and of a text that
  /// of the element around it. All throw Flaw.
  void start(int level, const Element& element);
  void text(int level, std::string_view part);
  void end(int level);

  /// Ends the note; null if it is left out as a whole, as a profile in the form of a document. The
  /// id of a note without one is 0.
  store::Note* finish();

  std::uint64_t itemsLeftOut() const { return itemsLeftOut_; }

 private:
  struct LeftOut {
    std::string name;
    std::string type;
  };

  void beginProfile(const Element& element);
  void count(std::size_t bytes);
  void beginItem(std::string_view name);
  void keep(const std::string& name, store::ItemValue value);
  void leaveOut(const std::string& name, std::string type);
  void reportLeftOut();

  NoteKind kind_;
  std::chrono::hours zone_;
  Report* report_;
  std::optional<ItemReader> item_;
  bool hasNoteInfo_ = false;
  bool isProfileInNoteForm_ = false;
  store::Note note_;
  std::unordered_set<std::string> keptNames_;
  std::size_t bytes_ = 0;  // of names and texts that are kept
  std::uint64_t itemsLeftOut_ = 0;
  std::vector<LeftOut> leftOut_;
  std::size_t leftOutBytes_ = 0;
};

}  // namespace dxl
