#include "platform/library.h"

#include <dlfcn.h>

#include <string>

namespace platform {

void* loadLibrary(const char* name) {
  // A name without a separator would be looked for in the system's folders only.
  return dlopen((std::string("./") + name).c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* findFunction(void* library, const char* name) { return dlsym(library, name); }

}  // namespace platform
