#include "report/files.h"

#include "platform/byte_files.h"

namespace reader {
namespace {

using platform::FileOutcome;

// Why, with a colon in front; nothing where there is no more to say.
const char* reasonOf(FileOutcome outcome) {
  switch (outcome) {
    case FileOutcome::missing:
      return ": no such file or folder";
    case FileOutcome::folder:
      return ": it is a folder";
    case FileOutcome::special:
      return ": it is no plain file";
    case FileOutcome::denied:
      return ": permission denied";
    case FileOutcome::busy:
      return ": another program has it open";
    case FileOutcome::full:
      return ": there is no room for it";
    default:
      return "";
  }
}

}  // namespace

std::string failureOf(FileOutcome outcome, const char* request) {
  return std::string("it cannot be ") + request + reasonOf(outcome);
}

void require(FileOutcome outcome, const std::string& name, const char* request) {
  if (outcome != FileOutcome::done) throw Failure(name, failureOf(outcome, request));
}

std::string bytesOf(const std::string& name) {
  std::string bytes;
  require(platform::readBytes(name, bytes), name, "read");
  return bytes;
}

}  // namespace reader
