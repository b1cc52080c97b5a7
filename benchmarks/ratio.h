// Comparison of two actions in one run. Times alone say as much of the machine as of the code; a
// ratio to a peer measured in turn with it does not.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

struct Subject {
  std::function<std::size_t()> run;  ///< Gives something of its result, so that it is computed.
  double amount = 1;                 ///< By which its time is divided.
};

/// The comparisons of one program. Each is the median of nine repetitions, in which both subjects
/// run in turn, each for 20 ms or for one call if that takes longer. Prints a line for each.
class Comparisons {
 public:
  /// The peer's time by the own time is `least` or more.
  void fastEnough(const std::string& what, const Subject& own, const Subject& peer, double least);

  /// The own time by the peer's is `most` or less.
  void shortEnough(const std::string& what, const Subject& own, const Subject& peer, double most);

  /// What main returns: 0 if all were as they ought to be.
  int exitStatus() const { return failed_ ? 1 : 0; }

 private:
  bool failed_ = false;
};
