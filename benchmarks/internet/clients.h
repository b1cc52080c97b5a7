// What is measured: the client of this project and its peer for each task. Each runs in a process
// of its own and aborts it if the result is wrong.
#pragma once

#include <cstdint>

namespace benchmark {

struct Task {
  const char* name;
  const char* peer;
  bool isWall;     ///< wall-clock time of the run; otherwise the processor time of the process
  double largest;  ///< what the ratio of this project's time to its peer's is to stay below
  void (*own)(std::uint16_t port);
  void (*other)(std::uint16_t port);
};

extern const Task tasks[4];

}  // namespace benchmark
