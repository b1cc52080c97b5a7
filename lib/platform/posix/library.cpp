#include "platform/library.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <string>

namespace platform {

void* loadLibrary(const char* name) {
  // A name without a separator would be looked for in the system's folders only.
  const std::string path = std::string("./") + name;
  // The loader would wait for the writer of a pipe, and read a device without end.
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* findFunction(void* library, const char* name) { return dlsym(library, name); }

}  // namespace platform
