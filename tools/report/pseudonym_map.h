// The file that keeps pseudonyms from one report to the next.
//
//   {"format":1,"values":{"server":{"CN=mail01/O=Nordholm":1}}}
//
// A value is bytes, whatever set they are of: each stands as the character of its number.
#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <string_view>

#include "report/pseudonyms.h"

namespace reader {

/// A file that is none of these. What it says shows nothing of the file.
class BadMap : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class PseudonymMap {
 public:
  PseudonymMap() = default;
  /// That of a file; an empty one is a new map. Raises BadMap.
  explicit PseudonymMap(std::string_view json);
  PseudonymMap(const PseudonymMap&) = delete;
  PseudonymMap& operator=(const PseudonymMap&) = delete;
  ~PseudonymMap() = default;

  /// They lean on the map.
  const std::deque<Pseudonym>& all() const { return all_; }

 private:
  std::deque<std::string> values_;
  std::deque<Pseudonym> all_;
};

/// The file with these pseudonyms.
std::string asMap(const std::deque<Pseudonym>& pseudonyms);

}  // namespace reader
