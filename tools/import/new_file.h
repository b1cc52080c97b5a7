// A file that comes to be at once or not at all.
#pragma once

#include <string>
#include <string_view>

namespace dxl {

/// A file beside its target until it takes its place. It is removed if it does not, also where a
/// signal ends the process. There is one at a time.
class NewFile {
 public:
  /// All functions throw ImportFailure.
  explicit NewFile(std::string target);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  void write(std::string_view bytes);

  /// Puts the file, once it is on the disk, in the place of its target. Fails if there is one that
  /// it is not to replace.
  void publish(bool replaces);

 private:
  void flush();

  std::string target_;
  std::string path_;
  int opened_;
  std::string pending_;
};

}  // namespace dxl
