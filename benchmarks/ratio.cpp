#include "ratio.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace {

constexpr std::size_t repetitions = 9;
constexpr double secondsOfRepetition = 0.02;

// Seconds of one call.
double timed(const Subject& subject, std::size_t calls) {
  [[maybe_unused]] static volatile std::size_t sink = 0;
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t call = 0; call < calls; ++call) sink = subject.run();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  return elapsed.count() / static_cast<double>(calls);
}

// So many calls that the clock and other processes weigh little.
std::size_t callsOfRepetition(const Subject& subject) {
  std::size_t calls = 1;
  while (timed(subject, calls) * static_cast<double>(calls) < secondsOfRepetition) calls *= 2;
  return calls;
}

using Samples = std::array<double, repetitions>;

double median(Samples samples) {
  std::ranges::nth_element(samples, samples.begin() + repetitions / 2);
  return samples[repetitions / 2];
}

struct Measured {
  double own;  // seconds of one call
  double peer;
  double timeRatio;  // own time by the peer's, each for its amount
};

Measured measure(const Subject& own, const Subject& peer) {
  const std::size_t ownCalls = callsOfRepetition(own);
  const std::size_t peerCalls = callsOfRepetition(peer);
  Samples ownTimes{};
  Samples peerTimes{};
  Samples ratios{};
  for (std::size_t i = 0; i < repetitions; ++i) {
    ownTimes[i] = timed(own, ownCalls);
    peerTimes[i] = timed(peer, peerCalls);
    ratios[i] = ownTimes[i] / own.amount / (peerTimes[i] / peer.amount);
  }
  return {median(ownTimes), median(peerTimes), median(ratios)};
}

void print(const std::string& what, const Measured& measured, double ratio, const char* relation,
           double limit, bool holds) {
  std::printf("%-40s %12.3f us  peer %12.3f us  ratio %6.2f, %s %.2f: %s\n", what.c_str(),
              measured.own * 1e6, measured.peer * 1e6, ratio, relation, limit,
              holds ? "ok" : "FAILED");
}

}  // namespace

void Comparisons::fastEnough(const std::string& what, const Subject& own, const Subject& peer,
                             double least) {
  const Measured measured = measure(own, peer);
  const double speed = 1 / measured.timeRatio;
  print(what, measured, speed, "at least", least, speed >= least);
  failed_ = failed_ || speed < least;
}

void Comparisons::shortEnough(const std::string& what, const Subject& own, const Subject& peer,
                              double most) {
  const Measured measured = measure(own, peer);
  print(what, measured, measured.timeRatio, "at most", most, measured.timeRatio <= most);
  failed_ = failed_ || measured.timeRatio > most;
}
