#include "store/file.h"

#include <windows.h>

#include <algorithm>
#include <system_error>

#include "platform/code_pages.h"
#include "store/letters.h"

namespace store {
namespace {

constexpr DWORD lockedByteHigh = 1U << 30;
constexpr DWORD errorNoSuchDevice = 433;  // the compiler's headers lack it

[[noreturn]] void fail(std::errc error) { throw std::system_error(std::make_error_code(error)); }

void require(bool succeeded) {
  if (!succeeded) fail(std::errc::io_error);
}

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::uint64_t joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

OVERLAPPED placeAt(DWORD high, DWORD low) {
  OVERLAPPED place{};
  place.Offset = low;
  place.OffsetHigh = high;
  return place;
}

OVERLAPPED placeAt(std::uint64_t position) {
  return placeAt(static_cast<DWORD>(position >> 32), static_cast<DWORD>(position));
}

std::wstring wide(const std::string& path) {
  constexpr std::uint32_t utf8 = 65001;
  const std::string text = asUtf8(path);
  std::u16string units(text.size(), u'\0');
  units.resize(platform::narrowToWide(utf8, false, text, units).length);
  return {units.begin(), units.end()};
}

[[noreturn]] void failToOpen(const std::wstring& path) {
  const DWORD error = GetLastError();
  // The system calls such a path one that it does not find.
  if (error == ERROR_FILENAME_EXCED_RANGE || path.size() >= MAX_PATH)
    fail(std::errc::filename_too_long);
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      fail(std::errc::no_such_file_or_directory);
    case ERROR_CANT_RESOLVE_FILENAME:
      fail(std::errc::too_many_symbolic_link_levels);
    case ERROR_CANT_ACCESS_FILE:  // of a socket
    case errorNoSuchDevice:       // the same under Wine
      fail(std::errc::is_a_directory);
    default:
      break;
  }
  const DWORD attributes = GetFileAttributesW(path.c_str());
  const bool isFolder =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  fail(isFolder ? std::errc::is_a_directory : std::errc::permission_denied);
}

std::intptr_t openFile(const std::wstring& path, Access access) {
  const DWORD rights = access == Access::read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
  const DWORD disposition = access == Access::create ? OPEN_ALWAYS : OPEN_EXISTING;
  const HANDLE opened =
      CreateFileW(path.c_str(), rights, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) failToOpen(path);
  return reinterpret_cast<std::intptr_t>(opened);
}

bool cut(HANDLE file, std::uint64_t size) {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  return SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
}

bool write(HANDLE file, std::uint64_t position, std::string_view bytes) {
  DWORD written = 0;
  OVERLAPPED place = placeAt(position);
  return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, &place) &&
         written == bytes.size();
}

// Set by hand, because the time that the system sets by itself may change once more when the file
// is closed, and then every append would look like one of somebody else.
bool setTimeOfChange(HANDLE file) {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return SetFileTime(file, nullptr, nullptr, &now) != 0;
}

}  // namespace

std::string nativePath(std::string path) { return path; }

File::File(const std::string& path, Access access) : File(openFile(wide(path), access)) {
  if (GetFileType(asHandle(handle_)) != FILE_TYPE_DISK) fail(std::errc::is_a_directory);
}

File::~File() {
  // The end of a handle ends its locks too, but at a moment of the system's choice.
  OVERLAPPED place = placeAt(lockedByteHigh, 0);
  UnlockFileEx(asHandle(handle_), 0, 1, 0, &place);
  CloseHandle(asHandle(handle_));
}

bool File::tryLock(Access access) {
  OVERLAPPED place = placeAt(lockedByteHigh, 0);
  const DWORD kind = access == Access::read ? 0 : LOCKFILE_EXCLUSIVE_LOCK;
  if (LockFileEx(asHandle(handle_), kind | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) return true;
  require(GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING);
  return false;
}

FileState File::state() const {
  BY_HANDLE_FILE_INFORMATION information{};
  require(GetFileInformationByHandle(asHandle(handle_), &information) != 0);
  FileState state;
  state.volume = information.dwVolumeSerialNumber;
  state.file = joined(information.nFileIndexHigh, information.nFileIndexLow);
  state.size = joined(information.nFileSizeHigh, information.nFileSizeLow);
  // A file time counts the same units from the year 1601.
  constexpr std::int64_t epoch = 116444736000000000;
  const FILETIME changed = information.ftLastWriteTime;
  state.changed += decltype(state.changed)::duration(
      static_cast<std::int64_t>(joined(changed.dwHighDateTime, changed.dwLowDateTime)) - epoch);
  return state;
}

std::string File::read(std::uint64_t from, std::uint64_t to) const {
  constexpr std::size_t most = 1U << 30;
  std::string bytes(static_cast<std::size_t>(to - from), '\0');
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    DWORD count = 0;
    OVERLAPPED place = placeAt(from + filled);
    const std::size_t wanted = std::min(bytes.size() - filled, most);
    const bool isRead = ReadFile(asHandle(handle_), bytes.data() + filled,
                                 static_cast<DWORD>(wanted), &count, &place) != 0;
    require(isRead || GetLastError() == ERROR_HANDLE_EOF);
    if (count == 0) break;
    filled += count;
  }
  bytes.resize(filled);
  return bytes;
}

void File::append(std::uint64_t kept, std::string_view bytes) {
  const HANDLE file = asHandle(handle_);
  require(cut(file, kept));
  if (write(file, kept, bytes) && setTimeOfChange(file) && FlushFileBuffers(file)) return;
  cut(file, kept);
  fail(std::errc::io_error);
}

}  // namespace store
