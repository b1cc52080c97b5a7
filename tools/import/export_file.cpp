#include "import/export_file.h"

#include <system_error>

#include "import/failure.h"

namespace dxl {
namespace {

// Calls `work`, which uses a file, and gives its result.
template <typename Work>
auto withFile(const std::string& path, Work work) {
  try {
    return work();
  } catch (const std::system_error& error) {
    const bool isNoFile = error.code() == std::errc::is_a_directory;
    throw ImportFailure(path + ": " + (isNoFile ? "is not a file" : error.code().message()));
  }
}

}  // namespace

ExportFile::ExportFile(const std::string& path)
    : path_(path),
      file_(withFile(path, [&] { return store::File(path, store::Access::read); })),
      state_(withFile(path, [this] { return file_.state(); })) {}

std::size_t ExportFile::read(char* buffer, std::size_t size) {
  return withFile(path_, [&] {
    const std::string bytes = file_.read(done_, done_ + size);
    done_ += bytes.size();
    return bytes.copy(buffer, size);
  });
}

void ExportFile::requireState(const store::FileState& state) const {
  if (withFile(path_, [this] { return file_.state(); }) != state)
    throw ImportFailure(path_ + ": has changed while it was read");
}

}  // namespace dxl
