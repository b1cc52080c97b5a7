// The black and white list of senders.
//
// Each entry is a note of the configuration database. A note that is of no use does not stop the
// load: it leaves a message in the list of load errors, which the report does not show, and the
// others follow.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"

namespace configuration {

/// What a note holds: the numbers as stored, and the address or domain that they ask for.
struct SenderFilterNote {
  std::u16string originalInput;  // what the administrator typed
  NUMBER action = 0;
  NUMBER colour = 0;
  std::u16string key;
};

class SenderFilterCache {
 public:
  class SenderFilterCacheError : public base::Error {
   public:
    using Error::Error;
  };

  /// A failure within a load, which is a load error or the reason of a SenderFilterCacheError.
  class SenderFilterCacheInternalError : public base::Error {
   public:
    using Error::Error;
  };

  /// A load is due once `refreshSeconds` have passed since the last.
  explicit SenderFilterCache(std::int32_t refreshSeconds) : refreshSeconds_(refreshSeconds) {}

  /// Loads all entries anew if that is due; `reloaded` tells whether it was. Raises
  /// SenderFilterCacheError. `now` is in seconds since 1970; without it the present moment counts.
  void refresh(bool& reloaded);
  void refresh(bool& reloaded, std::int64_t now);

  /// Adds the listing to `out`: a title, then a line for each entry behind `indent` tabs, in the
  /// order of the addresses and domains.
  void print(std::u16string& out, unsigned indent) const;

  /// What the last load could not use, a message for each note.
  const std::vector<std::u16string>& loadErrors() const { return loadErrors_; }
  bool hasErrors() const { return hasErrors_; }

 private:
  void load();
  void putInOrder();
  void addFilter(NOTEID id);
  void readFilter(NOTEID id);
  void enter(SenderFilterNote filter);

  enum class Colour { black, white, none };
  static const char16_t* printWord(Colour colour);

  struct Filter {
    std::u16string key;  // address or domain, exactly as stored
    Colour colour;
  };

  std::vector<Filter> filters_;  // once the search has ended, each key once and in order
  std::int32_t refreshSeconds_;
  std::int64_t lastLoad_ = 0;  // seconds since 1970
  std::vector<std::u16string> loadErrors_;
  bool hasErrors_ = false;  // that of the last load that reached its end
};

}  // namespace configuration
