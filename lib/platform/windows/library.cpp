#include "platform/library.h"

#include <windows.h>

namespace platform {

void* loadLibrary(const char* name) { return LoadLibraryA(name); }

void* findFunction(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace platform
