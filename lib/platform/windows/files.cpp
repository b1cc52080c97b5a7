#include "platform/files.h"

#include <sys/stat.h>
#include <windows.h>

#include <algorithm>

#include "platform/windows/write_all.h"

namespace platform {
namespace {

const wchar_t* native(const std::u16string& path) {
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  return reinterpret_cast<const wchar_t*>(path.c_str());
}

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

bool fileExists(const std::u16string& path) {
  // The form with a 64-bit size: the narrower one fails for a database of 4 GB.
  struct _stat64 status {};
  return _wstat64(native(path), &status) == 0;
}

bool createFolder(const std::u16string& path) {
  return CreateDirectoryW(native(path), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

bool changeDirectory(const std::string& path) { return SetCurrentDirectoryA(path.c_str()) != 0; }

std::vector<FolderEntry> listFolder(const std::string& pattern) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAA data{};
  const HANDLE search = FindFirstFileA(pattern.c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    const char* const name = data.cFileName;
    entries.push_back({name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (FindNextFileA(search, &data));
  FindClose(search);
  return entries;
}

bool OutputFile::open(const std::u16string& path) {
  static_assert(none == -1, "the value of INVALID_HANDLE_VALUE");
  close();
  handle_ = reinterpret_cast<std::intptr_t>(
      CreateFileW(native(path), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  return isOpen();
}

void OutputFile::close() {
  if (isOpen()) CloseHandle(asHandle(handle_));
  handle_ = none;
}

std::int64_t OutputFile::position() const {
  LARGE_INTEGER position{};
  const LARGE_INTEGER here{};
  if (!SetFilePointerEx(asHandle(handle_), here, &position, FILE_CURRENT)) return -1;
  return position.QuadPart;
}

bool OutputFile::moveTo(std::int64_t position) {
  LARGE_INTEGER target{};
  target.QuadPart = position;
  return SetFilePointerEx(asHandle(handle_), target, nullptr, FILE_BEGIN) != 0;
}

bool OutputFile::write(std::string_view bytes) { return writeAll(asHandle(handle_), bytes); }

}  // namespace platform
