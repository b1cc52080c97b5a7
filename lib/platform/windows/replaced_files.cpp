#include "platform/replaced_files.h"

#include <windows.h>

#include "platform/code_pages.h"
#include "platform/windows/file_requests.h"
#include "platform/windows/write_all.h"

namespace platform {
namespace {

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::string toUtf8(const std::wstring& text) {
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  return wideToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

// The name of the file that a link leads to; empty if there is none.
std::wstring followed(const std::wstring& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    return name;
  const HANDLE file =
      CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  constexpr DWORD longestPath = 1U << 15;
  std::wstring target(longestPath, L'\0');
  target.resize(GetFinalPathNameByHandleW(file, target.data(), longestPath, FILE_NAME_NORMALIZED));
  CloseHandle(file);
  return target;
}

// A file that is on its way out denies everything, its attributes too.
bool isBeingRemoved(const std::wstring& name) {
  return GetLastError() == ERROR_ACCESS_DENIED &&
         GetFileAttributesW(name.c_str()) == INVALID_FILE_ATTRIBUTES &&
         GetLastError() == ERROR_ACCESS_DENIED;
}

}  // namespace

FileOutcome replacePrivateFile(const std::string& name, std::string_view bytes) {
  const std::wstring target = followed(nativeName(name));
  if (target.empty()) return FileOutcome::missing;
  const std::wstring beside = target + L"." + std::to_wstring(GetCurrentProcessId()) + L".tmp";
  const HANDLE file = CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return outcomeOf(GetLastError());
  const bool written = writeAll(file, bytes) && FlushFileBuffers(file);
  FileOutcome outcome = outcomeOf(GetLastError());
  CloseHandle(file);
  if (written && MoveFileExW(beside.c_str(), target.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return FileOutcome::done;
  if (written) outcome = outcomeOf(GetLastError());
  DeleteFileW(beside.c_str());
  return outcome;
}

ReplacementLock::ReplacementLock(const std::string& name) {
  const std::wstring target = followed(nativeName(name));
  file_ = (target.empty() ? name : toUtf8(target)) + ".lock";
}

// Shared with nobody, the open file is the lock; no two have one even while it is removed.
FileOutcome ReplacementLock::tryTake() {
  const std::wstring name = nativeName(file_);
  const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const FileOutcome outcome = outcomeOf(GetLastError());
    return isBeingRemoved(name) ? FileOutcome::busy : outcome;
  }
  handle_ = reinterpret_cast<std::intptr_t>(file);
  return FileOutcome::done;
}

// A file that holds something is not one that was made here.
void ReplacementLock::release() {
  if (handle_ == none) return;
  LARGE_INTEGER size{};
  FILE_DISPOSITION_INFO removal{TRUE};
  if (GetFileSizeEx(asHandle(handle_), &size) && size.QuadPart == 0)
    SetFileInformationByHandle(asHandle(handle_), FileDispositionInfo, &removal, sizeof removal);
  CloseHandle(asHandle(handle_));
  handle_ = none;
}

}  // namespace platform
