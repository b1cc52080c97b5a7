#include "base/paths.h"

#include "platform/files.h"

namespace base {

bool fileExists(const std::u16string& path) { return platform::fileExists(path); }

bool createFolder(const std::u16string& parent, const std::u16string& name) {
  return platform::createFolder(parent + u"//" + name);
}

}  // namespace base
