#include "platform/byte_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/file_outcomes.h"

namespace platform {
namespace {

FileOutcome readAll(int file, std::string& bytes) {
  constexpr std::size_t pieceSize = 1U << 16;
  char piece[pieceSize];
  struct stat status {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode))
    bytes.reserve(bytes.size() + static_cast<std::size_t>(status.st_size));
  for (;;) {
    const ssize_t count = ::read(file, piece, pieceSize);
    if (count < 0 && errno != EINTR) return outcomeOf(errno);
    if (count == 0) return FileOutcome::done;
    if (count > 0) bytes.append(piece, static_cast<std::size_t>(count));
  }
}

}  // namespace

std::vector<std::string> commandLine(int argc, char** argv) { return {argv, argv + argc}; }

bool prepareByteStreams() { return ::fcntl(STDOUT_FILENO, F_GETFD) >= 0; }

FileOutcome readBytes(const std::string& name, std::string& bytes) {
  if (name == "-") return readAll(STDIN_FILENO, bytes);
  const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (file < 0) return outcomeOf(errno);
  const FileOutcome outcome = readAll(file, bytes);
  ::close(file);
  return outcome;
}

}  // namespace platform
