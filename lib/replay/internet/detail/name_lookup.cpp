#include "replay/internet/detail/name_lookup.h"

#include "replay/internet/detail/name_lookup_emulation.h"

namespace replay::internet::address {
namespace {

// Longest path of the system's folder, its closing zero included.
constexpr unsigned folder_size = 260;

template <typename Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(platform::systemLibraries.GetProcAddress(library, name));
  return function != nullptr;
}

}  // namespace

name_lookup::name_lookup()
    : functions_{emulation::getaddrinfo, emulation::getnameinfo, emulation::freeaddrinfo} {
  void* const library = load_library();
  if (library == nullptr) return;
  functions found{};
  if (find_functions(library, found)) {
    functions_ = found;
  } else {
    platform::systemLibraries.FreeLibrary(library);
  }
}

int name_lookup::get_addr_info(const char* node, platform::addrinfo** list) const {
  const int result = functions_.getaddrinfo(node, nullptr, nullptr, list);
  platform::sockets.WSASetLastError(result);
  return result;
}

int name_lookup::get_name_info(const void* address, int size, char* name, int flags) const {
  const int result = functions_.getnameinfo(address, size, name, name_size, nullptr, 0, flags);
  platform::sockets.WSASetLastError(result);
  return result;
}

void name_lookup::free_addr_info(platform::addrinfo* list) const { functions_.freeaddrinfo(list); }

void* name_lookup::load_library() {
  char buffer[folder_size] = {};
  const unsigned length = platform::systemLibraries.GetSystemDirectoryA(buffer, folder_size);
  // A folder that does not fit is told by the size that it needs.
  if (length == 0 || length >= folder_size) return nullptr;
  const std::string folder(buffer);
  void* const library = load_library_with_lookups(folder + R"(\ws2_32)");
  // Windows 2000 has them in a library of their own, once it is installed.
  return library != nullptr ? library : load_library_with_lookups(folder + R"(\wship6)");
}

void* name_lookup::load_library_with_lookups(const std::string& path) {
  void* const library = platform::systemLibraries.LoadLibraryA(path.c_str());
  if (library == nullptr) return nullptr;
  if (platform::systemLibraries.GetProcAddress(library, "getaddrinfo") != nullptr) return library;
  platform::systemLibraries.FreeLibrary(library);
  return nullptr;
}

bool name_lookup::find_functions(void* library, functions& found) {
  return find(library, "getaddrinfo", found.getaddrinfo) &&
         find(library, "getnameinfo", found.getnameinfo) &&
         find(library, "freeaddrinfo", found.freeaddrinfo);
}

name_lookup& process_name_lookup() {
  static name_lookup lookup;
  return lookup;
}

}  // namespace replay::internet::address
