// Runs each task and its peer nine times in turn, a process each, and prints the medians.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "internet/clients.h"
#include "internet/server.h"

namespace benchmark {
namespace {

constexpr std::size_t repetitions = 9;

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

// The time of `run` in a process of its own.
double measure(void (*run)(std::uint16_t), bool isWall, std::uint16_t port) {
  const auto begin = std::chrono::steady_clock::now();
  const pid_t process = ::fork();
  if (process == 0) {
    run(port);
    ::_exit(0);
  }
  int status = 0;
  rusage usage{};
  ::wait4(process, &status, 0, &usage);
  if (status != 0) std::abort();
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
  return isWall ? wall.count() : seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double median(std::array<double, repetitions> times) {
  std::nth_element(times.begin(), times.begin() + repetitions / 2, times.end());
  return times[repetitions / 2];
}

bool run(const Task& task, std::uint16_t port) {
  std::array<double, repetitions> own{};
  std::array<double, repetitions> other{};
  for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
    own.at(repetition) = measure(task.own, task.isWall, port);
    other.at(repetition) = measure(task.other, task.isWall, port);
  }
  const double ratio = median(own) / median(other);
  std::printf("%-34s %-28s %8.1f ms %8.1f ms  ratio %.2f, to be at most %.2f\n", task.name,
              task.peer, 1e3 * median(own), 1e3 * median(other), ratio, task.largest);
  std::fflush(stdout);
  return ratio <= task.largest;
}

}  // namespace
}  // namespace benchmark

int main() {
  const benchmark::Server server;
  bool isFastEnough = true;
  for (const benchmark::Task& task : benchmark::tasks) {
    isFastEnough &= benchmark::run(task, server.port());
  }
  return isFastEnough ? EXIT_SUCCESS : EXIT_FAILURE;
}
