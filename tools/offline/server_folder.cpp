#include "offline/server_folder.h"

#include <string>

#include "offline/messages.h"
#include "offline/program_texts.h"

namespace offline {

namespace fs = std::filesystem;

namespace {

fs::path absoluteFolder(const fs::path& folder) {
  fs::path absolute = fs::absolute(folder).lexically_normal();
  return absolute.has_filename() ? absolute : absolute.parent_path();
}

}  // namespace

ServerFolder::ServerFolder(const fs::path& folder)
    : root_(absoluteFolder(folder)),
      wasThere_(fs::exists(root_)),
      permissions_(fs::status(root_).permissions()) {
  if (!wasThere_ && fs::is_symlink(fs::symlink_status(root_)))
    throw Failed(root_.string() + " is a link that leads nowhere");
  if (wasThere_ && !fs::is_directory(root_))
    throw Failed(root_.string() + " is there and is no folder");
  if (wasThere_ && !fs::is_empty(root_))
    throw Failed(root_.string() + " is there and is not empty");

  // The Notes library takes a directory of 255 bytes, the separator behind it included.
  constexpr std::size_t longest = 255;
  if (program().string().size() >= longest)
    throw Failed("the path of " + root_.string() + " is too long for the Notes library");
  // A backslash separates, and a "+" begins a shift of UTF-7, behind which the report is lost.
  if (hasControl(root_.string()) || root_.string().find_first_of("\\+") != std::string::npos)
    throw Failed(root_.string() + ": the path holds a backslash, a \"+\" or a control character");
}

void ServerFolder::create() const {
  fs::create_directories(program());
  fs::permissions(root_, fs::perms::owner_all);
  fs::create_directory(data());
}

void ServerFolder::undo() const {
  if (!wasThere_) {
    fs::remove_all(root_);
    return;
  }
  for (const auto& entry : fs::directory_iterator(root_)) fs::remove_all(entry);
  fs::permissions(root_, permissions_);
}

std::optional<fs::path> ServerFolder::report() const {
  const fs::path folder = data() / "Quellbright";
  if (fs::is_directory(folder)) {
    for (const auto& entry : fs::directory_iterator(folder)) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("Quellbright-DIAGNOSTIC-") && name.ends_with(".log"))
        return entry.path();
    }
  }
  return std::nullopt;
}

}  // namespace offline
