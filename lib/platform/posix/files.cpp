#include "platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/ascii.h"
#include "platform/posix/paths.h"
#include "platform/posix/write_all.h"

namespace platform {
namespace {

// Whether a name matches a mask with "*" and "?", without regard to case. Goes back to the last
// star only, which is enough because an earlier star need never take more than it has.
bool matches(std::string_view name, std::string_view mask) {
  std::size_t at = 0;
  std::size_t next = 0;
  std::size_t star = std::string_view::npos;
  std::size_t retry = 0;
  while (at < name.size()) {
    if (next < mask.size() && mask[next] == '*') {
      star = next++;
      retry = at;
    } else if (next < mask.size() &&
               (mask[next] == '?' || lowered(mask[next]) == lowered(name[at]))) {
      ++at;
      ++next;
    } else if (star != std::string_view::npos) {
      next = star + 1;
      at = ++retry;
    } else {
      return false;
    }
  }
  return mask.find_first_not_of('*', next) == std::string_view::npos;
}

}  // namespace

bool fileExists(const std::u16string& path) {
  const auto native = nativePath(path);
  struct stat status {};
  return native && ::stat(native->c_str(), &status) == 0;
}

bool createFolder(const std::u16string& path) {
  const auto native = nativePath(path);
  return native && (::mkdir(native->c_str(), 0777) == 0 || errno == EEXIST);
}

bool changeDirectory(const std::string& path) {
  const auto native = nativePath(path);
  return native && ::chdir(native->c_str()) == 0;
}

std::vector<FolderEntry> listFolder(const std::string& pattern) {
  std::vector<FolderEntry> entries;
  const auto native = nativePath(pattern);
  if (!native) return entries;
  const std::size_t separator = native->rfind('/');
  const std::string folder =
      separator == std::string::npos ? "./" : native->substr(0, separator + 1);
  std::string mask = separator == std::string::npos ? *native : native->substr(separator + 1);
  if (mask == "*.*") mask = "*";

  DIR* const stream = ::opendir(folder.c_str());
  if (stream == nullptr) return entries;
  while (const dirent* entry = ::readdir(stream)) {
    const std::string name = entry->d_name;
    struct stat status {};
    if (!matches(name, mask) || ::stat((folder + name).c_str(), &status) != 0) continue;
    entries.push_back({name, S_ISDIR(status.st_mode)});
  }
  ::closedir(stream);
  // The system's own order is that of its hash, which differs from run to run.
  std::sort(entries.begin(), entries.end(),
            [](const auto& left, const auto& right) { return left.name < right.name; });
  return entries;
}

bool OutputFile::open(const std::u16string& path) {
  close();
  const auto native = nativePath(path);
  if (!native) return false;
  // Without O_NONBLOCK a pipe of that name would wait for a reader, and without O_NOCTTY a terminal
  // could become that of the process.
  constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  handle_ = ::open(native->c_str(), flags, 0666);
  struct stat status {};
  if (isOpen() && (::fstat(static_cast<int>(handle_), &status) != 0 || !S_ISREG(status.st_mode)))
    close();
  return isOpen();
}

void OutputFile::close() {
  if (isOpen()) ::close(static_cast<int>(handle_));
  handle_ = none;
}

std::int64_t OutputFile::position() const {
  return ::lseek(static_cast<int>(handle_), 0, SEEK_CUR);
}

bool OutputFile::moveTo(std::int64_t position) {
  return ::lseek(static_cast<int>(handle_), position, SEEK_SET) == position;
}

bool OutputFile::write(std::string_view bytes) {
  return writeAll(static_cast<int>(handle_), bytes);
}

}  // namespace platform
