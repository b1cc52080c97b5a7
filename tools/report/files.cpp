#include "report/files.h"

#include "platform/byte_files.h"

namespace reader {

void require(platform::FileOutcome outcome, const std::string& name, const char* request) {
  if (outcome != platform::FileOutcome::done) throw Failure(name + ": it cannot be " + request);
}

std::string bytesOf(const std::string& name) {
  std::string bytes;
  require(platform::readBytes(name, bytes), name, "read");
  return bytes;
}

}  // namespace reader
