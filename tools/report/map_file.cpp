#include "report/map_file.h"

#include <chrono>
#include <thread>

#include "platform/byte_files.h"
#include "report/files.h"

namespace reader {

namespace {

std::unique_ptr<PseudonymMap> mapIn(const std::string& bytes, const std::string& name) {
  try {
    return std::make_unique<PseudonymMap>(bytes);
  } catch (const BadMap& error) {
    throw Failure(name, error.what());
  }
}

void requireFile(const std::string& name) {
  if (name == "-") throw Failure("a map is a file of its own");
}

}  // namespace

std::unique_ptr<PseudonymMap> readMap(const std::string& name) {
  requireFile(name);
  return mapIn(bytesOf(name), name);
}

MapFile::MapFile(const std::string& name) : name_(name), lock_(name) {
  requireFile(name);
  takeLock();
  std::string bytes;
  const platform::FileOutcome outcome = platform::readBytes(name, bytes);
  if (outcome != platform::FileOutcome::missing) require(outcome, name, "read");
  map_ = mapIn(bytes, name);
}

void MapFile::replace(const std::deque<Pseudonym>& pseudonyms) {
  platform::Replacement file(name_, platform::Readers::owner);
  file.write(asMap(pseudonyms));
  require(file.finish(), name_, "written");
  lock_.release();
}

void MapFile::takeLock() {
  using Clock = std::chrono::steady_clock;
  constexpr auto longest = std::chrono::seconds(10);
  constexpr auto pause = std::chrono::milliseconds(10);
  const auto end = Clock::now() + longest;
  platform::FileOutcome outcome = lock_.tryTake();
  while (outcome == platform::FileOutcome::busy && Clock::now() < end) {
    std::this_thread::sleep_for(pause);
    outcome = lock_.tryTake();
  }
  if (outcome == platform::FileOutcome::busy)
    throw Failure(lock_.file(), "another run has had this lock of the map for ten seconds");
  require(outcome, lock_.file(), "locked");
}

}  // namespace reader
