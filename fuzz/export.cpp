// Exports: each note that is read of one is a line of a store, and read of it as it was.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "check.h"
#include "import/export_reader.h"
#include "import/failure.h"

namespace {

// A plain file without a place, for what reads files alone.
class FileInMemory {
 public:
  FileInMemory(const std::uint8_t* data, std::size_t size) : file_(memfd_create("export", 0)) {
    check(file_ >= 0 && write(file_, data, size) == static_cast<ssize_t>(size));
  }
  ~FileInMemory() { close(file_); }
  FileInMemory(const FileInMemory&) = delete;
  FileInMemory& operator=(const FileInMemory&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

bool isKept(store::Note& note) {
  note.id = std::max<std::uint32_t>(note.id, 1);
  const std::string line = store::noteLine(note);
  const std::optional<store::Note> kept = store::readNoteLine(line);
  check(kept.has_value() && store::noteLine(*kept) == line);
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const FileInMemory content(data, size);
  dxl::Report report(nullptr);
  dxl::Reading reading{std::chrono::hours(1), &report, isKept, {}};
  try {
    dxl::ExportFile file(content.path());
    dxl::readExport(file, reading, report);
  } catch (const dxl::ImportFailure&) {
    return 0;
  }
  return 0;
}
