// Shared libraries that are found at run time.
#pragma once

namespace platform {

/// Loads the library `name` from the current directory, where no other folder that the system
/// searches first has one. Null if there is none or it cannot be loaded. It stays loaded until the
/// process ends.
void* loadLibrary(const char* name);

/// The address of an exported function, or null.
void* findFunction(void* library, const char* name);

}  // namespace platform
