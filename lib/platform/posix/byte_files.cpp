#include "platform/byte_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "platform/posix/write_all.h"

namespace platform {
namespace {

ReadOutcome readAll(int file, std::string& bytes) {
  constexpr std::size_t piece = 1U << 20;
  struct stat status {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode))
    bytes.reserve(bytes.size() + static_cast<std::size_t>(status.st_size) + piece);
  for (;;) {
    const std::size_t size = bytes.size();
    bytes.resize(size + piece);
    const ssize_t count = ::read(file, bytes.data() + size, piece);
    bytes.resize(size + static_cast<std::size_t>(count > 0 ? count : 0));
    if (count < 0 && errno != EINTR) return ReadOutcome::failed;
    if (count == 0) return ReadOutcome::read;
  }
}

}  // namespace

std::vector<std::string> commandLine(int argc, char** argv) { return {argv, argv + argc}; }

bool prepareByteStreams() { return ::fcntl(STDOUT_FILENO, F_GETFD) >= 0; }

ReadOutcome readBytes(const std::string& name, std::string& bytes) {
  if (name == "-") return readAll(STDIN_FILENO, bytes);
  const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (file < 0) return errno == ENOENT ? ReadOutcome::missing : ReadOutcome::failed;
  const ReadOutcome outcome = readAll(file, bytes);
  ::close(file);
  return outcome;
}

bool replacePrivateFile(const std::string& name, std::string_view bytes) {
  std::string beside = name + ".XXXXXX";
  const int file = ::mkstemp(beside.data());
  if (file < 0) return false;
  const bool written = writeAll(file, bytes) && ::fsync(file) == 0;
  const bool closed = ::close(file) == 0;
  if (written && closed && std::rename(beside.c_str(), name.c_str()) == 0) return true;
  ::unlink(beside.c_str());
  return false;
}

}  // namespace platform
