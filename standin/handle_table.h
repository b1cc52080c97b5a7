// What a caller has handles of.
//
// Every kind of thing has a table of its own, and all tables take their numbers from one source
// that gives none out twice: a handle of the wrong kind and one that was closed are both unknown to
// the table that is asked, and never those of a younger thing. A thing does not move while its
// handle is open.
#pragma once

#include <unordered_map>
#include <utility>

#include "notes/abi.h"
#include "standin/status.h"

namespace standin {

class HandleNumbers {
 public:
  HANDLE next() { return ++last_; }

 private:
  HANDLE last_ = 0;
};

/// `unknown` is what an unknown handle is refused with.
template <typename Thing, Status unknown>
class HandleTable {
 public:
  explicit HandleTable(HandleNumbers& numbers) : numbers_(numbers) {}

  HANDLE add(Thing thing) {
    const HANDLE handle = numbers_.next();
    things_.emplace(handle, std::move(thing));
    return handle;
  }

  bool contains(HANDLE handle) const { return things_.contains(handle); }

  Thing& at(HANDLE handle) {
    const auto found = things_.find(handle);
    if (found == things_.end()) throw Failure(unknown);
    return found->second;
  }

  void close(HANDLE handle) {
    if (things_.erase(handle) == 0) throw Failure(unknown);
  }

 private:
  HandleNumbers& numbers_;
  std::unordered_map<HANDLE, Thing> things_;
};

}  // namespace standin
