// Which notes of the exports come into the store, and which of them keep their ids.
//
// It is asked about each note, in the order of the exports, after all have been learned in that
// order. Of profiles of one name and user the last stays, and the others occupy no id; of notes
// with one id the first keeps it. Four bytes are kept of a note, and the names of a profile.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "store/note.h"

namespace dxl {

class NoteChoice {
 public:
  enum class Fate { dropped, keepsId, getsId };

  void learn(const store::Note& note);

  /// Ends the learning, after which the first note is the next to be asked about.
  void settle();

  /// Makes the first note the next to be asked about.
  void restart();

  Fate fateOf(const store::Note& next);

  /// The highest id that a note keeps; 0 if none does.
  std::uint32_t highestId() const { return ids_.empty() ? 0 : ids_.back(); }

 private:
  struct Profile {
    std::uint64_t number;  // among all profiles, from 1
    std::uint32_t id;
  };

  std::map<std::pair<std::string, std::string>, Profile> lastProfiles_;
  std::uint64_t profiles_ = 0;      // that were learned, or asked about
  std::vector<std::uint32_t> ids_;  // that notes keep; once settled in order and each once
  std::vector<bool> isGivenOut_;    // of each id
};

}  // namespace dxl
