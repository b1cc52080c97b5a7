// The notes of a database as a load has found them: by id, and profile notes by their names.
//
// Notes are shared and never change: a note that is written again is another object in the same
// place, so that what a search or a caller took out stays as it was.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standin/text_index.h"
#include "store/note.h"

namespace standin {

using SharedNote = std::shared_ptr<const store::Note>;

class NoteIndex {
 public:
  /// Takes a note in; one of the same id gives way.
  void put(const SharedNote& note);

  /// Both give null if there is none.
  SharedNote find(std::uint32_t id) const;
  SharedNote find(const store::ProfileName& name) const;

  /// The notes that are no profile notes and for which every condition holds, in the order of ids.
  std::vector<SharedNote> documents(const std::vector<TextCondition>& conditions) const;

  /// An id that is higher than all others. Throws noIdsLeft.
  std::uint32_t nextId() const;

 private:
  const TextIndex& textIndex(const TextCondition& condition) const;

  std::map<std::uint32_t, SharedNote> notes_;
  std::map<std::pair<std::string, std::string>, std::uint32_t> profiles_;
  // By item, and whether letters are made small; each is made when it is first asked for.
  mutable std::map<std::pair<std::string, bool>, TextIndex> texts_;
};

}  // namespace standin
