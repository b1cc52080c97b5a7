// One note of an export: its items as the members of a line of a store.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "import/item_reader.h"
#include "import/report.h"
#include "import/spool.h"
#include "import/xml_reader.h"

namespace dxl {

enum class NoteKind { document, profile, rawDocument };

class NoteReader {
 public:
  /// Begins a note with its element; items that are left out are reported. Throws Flaw for a
  /// profile without a name.
  NoteReader(NoteKind kind, const Element& element, std::chrono::hours zone, Report& report);

  /// Elements and texts within the note; `level` is that of the element, from 1, and of a text that
  /// of the element around it. All throw Flaw.
  void start(int level, const Element& element);
  void text(int level, std::string_view part);
  void end(int level);

  /// Ends the note; nothing if it is left out as a whole, as a profile in the form of a document.
  std::optional<SpooledNote> finish();

 private:
  struct LeftOut {
    std::string name;
    std::string type;
  };

  void beginProfile(const Element& element);
  void count(std::size_t bytes);
  void beginItem(std::string_view name);
  void finishItem();
  void keep(const std::string& name, const std::string& json, std::size_t bytes);
  void leaveOut(std::string name, std::string type);
  void reportLeftOut();

  NoteKind kind_;
  Report& report_;
  ItemReader item_;
  bool isInItem_ = false;
  bool hasNoteInfo_ = false;
  bool isProfileInNoteForm_ = false;
  SpooledNote note_;
  std::string form_;   // the member of the form, which is the first of the items
  std::string items_;  // the other members
  std::unordered_set<std::string> keptNames_;
  std::size_t bytes_ = 0;  // of names and texts that are kept
  std::vector<LeftOut> leftOut_;
  std::size_t leftOutBytes_ = 0;
};

}  // namespace dxl
