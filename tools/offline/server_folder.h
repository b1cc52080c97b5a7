// The folder of the server that is laid out.
#pragma once

#include <filesystem>
#include <optional>

namespace offline {

class ServerFolder {
 public:
  /// Only looks at the folder, which is absent or empty. Throws Failed for any other, and for a
  /// path that notes.ini cannot hold or the Notes library does not take.
  explicit ServerFolder(const std::filesystem::path& folder);

  /// Makes the folder, which from then on is its owner's alone, and those in it.
  void create() const;

  /// Leaves the folder as it was before it was made.
  void undo() const;

  std::filesystem::path program() const { return root_ / "program"; }
  std::filesystem::path data() const { return root_ / "data"; }

  /// What the imports leave out, item by item.
  std::filesystem::path leftOut() const { return root_ / "left-out.txt"; }

  /// The report of the run; nothing if there is none.
  std::optional<std::filesystem::path> report() const;

 private:
  std::filesystem::path root_;  // absolute
  bool wasThere_;
  std::filesystem::perms permissions_;
};

}  // namespace offline
