// The map of pseudonyms as a file that several runs keep together.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "platform/replaced_files.h"
#include "report/pseudonym_map.h"

namespace reader {

/// The map of a file. Raises Failure.
std::unique_ptr<PseudonymMap> readMap(const std::string& name);

/// Has the file to itself from before it is read until it is replaced: of two runs that read the
/// same map each would give its number to another value.
class MapFile {
 public:
  /// Waits for ten seconds at most. A file that is missing or empty is a new map. Raises Failure.
  explicit MapFile(const std::string& name);

  /// They lean on the object.
  const std::deque<Pseudonym>& pseudonyms() const { return map_->all(); }

  /// Writes the map, and leaves it to others. Raises Failure.
  void replace(const std::deque<Pseudonym>& pseudonyms);

 private:
  void takeLock();

  std::string name_;
  platform::ReplacementLock lock_;
  std::unique_ptr<PseudonymMap> map_{};
};

}  // namespace reader
