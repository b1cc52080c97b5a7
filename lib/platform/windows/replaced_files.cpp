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

// A handle by which nothing of the file can be read or written.
HANDLE openToAsk(const std::wstring& name) {
  return CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool informationOf(const std::string& name, BY_HANDLE_FILE_INFORMATION& information) {
  if (name == "-")
    return GetFileInformationByHandle(GetStdHandle(STD_INPUT_HANDLE), &information) != 0;
  const HANDLE file = openToAsk(nativeName(name));
  const bool isKnown = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return isKnown;
}

// The name of the file that a link leads to; empty if there is none.
std::wstring followed(const std::wstring& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    return name;
  const HANDLE file = openToAsk(name);
  if (file == INVALID_HANDLE_VALUE) return {};
  constexpr DWORD longestPath = 1U << 15;
  std::wstring target(longestPath, L'\0');
  target.resize(GetFinalPathNameByHandleW(file, target.data(), longestPath, FILE_NAME_NORMALIZED));
  CloseHandle(file);
  return target;
}

// Whether a file may be replaced, or made.
FileOutcome fitnessOf(const std::wstring& name) {
  if (name.empty()) return FileOutcome::missing;
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return FileOutcome::done;
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileOutcome::folder;
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? FileOutcome::denied : FileOutcome::done;
}

// A file that is on its way out denies everything, its attributes too.
bool isBeingRemoved(const std::wstring& name) {
  return GetLastError() == ERROR_ACCESS_DENIED &&
         GetFileAttributesW(name.c_str()) == INVALID_FILE_ATTRIBUTES &&
         GetLastError() == ERROR_ACCESS_DENIED;
}

}  // namespace

Replacement::Replacement(const std::string& name, Readers /*readers*/) {
  const std::wstring target = followed(nativeName(name));
  outcome_ = fitnessOf(target);
  if (outcome_ != FileOutcome::done) return;
  target_ = toUtf8(target);
  beside_ = target_ + "." + std::to_string(GetCurrentProcessId()) + ".tmp";
  const HANDLE file = CreateFileW(nativeName(beside_).c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    outcome_ = outcomeOf(GetLastError());
    return;
  }
  handle_ = reinterpret_cast<std::intptr_t>(file);
}

Replacement::~Replacement() {
  if (handle_ != noHandle) CloseHandle(asHandle(handle_));
  // Empty where nothing was made, and where it has taken the name.
  if (!beside_.empty()) DeleteFileW(nativeName(beside_).c_str());
}

FileOutcome Replacement::write(std::string_view bytes) {
  if (outcome_ == FileOutcome::done && !writeAll(asHandle(handle_), bytes))
    outcome_ = outcomeOf(GetLastError());
  return outcome_;
}

// A file that is open cannot take another name.
FileOutcome Replacement::finish() {
  if (outcome_ != FileOutcome::done) return outcome_;
  if (!FlushFileBuffers(asHandle(handle_))) return outcome_ = outcomeOf(GetLastError());
  CloseHandle(asHandle(handle_));
  handle_ = noHandle;
  if (!MoveFileExW(nativeName(beside_).c_str(), nativeName(target_).c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return outcome_ = outcomeOf(GetLastError());
  beside_.clear();
  return outcome_;
}

bool isSameFile(const std::string& left, const std::string& right) {
  BY_HANDLE_FILE_INFORMATION files[2] = {};
  return informationOf(left, files[0]) && informationOf(right, files[1]) &&
         files[0].dwVolumeSerialNumber == files[1].dwVolumeSerialNumber &&
         files[0].nFileIndexHigh == files[1].nFileIndexHigh &&
         files[0].nFileIndexLow == files[1].nFileIndexLow;
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
  if (handle_ == noHandle) return;
  LARGE_INTEGER size{};
  FILE_DISPOSITION_INFO removal{TRUE};
  if (GetFileSizeEx(asHandle(handle_), &size) && size.QuadPart == 0)
    SetFileInformationByHandle(asHandle(handle_), FileDispositionInfo, &removal, sizeof removal);
  CloseHandle(asHandle(handle_));
  handle_ = noHandle;
}

}  // namespace platform
