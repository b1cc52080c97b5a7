#include "platform/byte_files.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>

#include "platform/code_pages.h"
#include "platform/windows/file_requests.h"

// The runtime library's own: it takes the command line of the process apart.
extern "C" int __wgetmainargs(int* argc, wchar_t*** argv, wchar_t*** environment, int expand,
                              int* newMode);

namespace platform {
namespace {

std::string toUtf8(const wchar_t* text) {
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  return wideToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(text), wcslen(text)));
}

// The system calls a folder one that it denies.
bool isFolder(const std::wstring& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FileOutcome readAll(HANDLE file, std::string& bytes) {
  constexpr DWORD pieceSize = 1U << 16;
  char piece[pieceSize];
  LARGE_INTEGER fileSize{};
  if (GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &fileSize))
    bytes.reserve(bytes.size() + static_cast<std::size_t>(fileSize.QuadPart));
  for (;;) {
    DWORD count = 0;
    const bool done = ReadFile(file, piece, pieceSize, &count, nullptr) != 0;
    bytes.append(piece, count);
    // A pipe whose other end has closed is at its end.
    if (!done && GetLastError() != ERROR_BROKEN_PIPE) return outcomeOf(GetLastError());
    if (count == 0) return FileOutcome::done;
  }
}

}  // namespace

std::vector<std::string> commandLine(int argc, char** argv) {
  int count = 0;
  wchar_t** words = nullptr;
  wchar_t** environment = nullptr;
  int newMode = 0;
  if (__wgetmainargs(&count, &words, &environment, 0, &newMode) < 0) return {argv, argv + argc};
  std::vector<std::string> result;
  result.reserve(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) result.push_back(toUtf8(words[index]));
  return result;
}

bool prepareByteStreams() {
  _setmode(_fileno(stdin), _O_BINARY);
  return _setmode(_fileno(stdout), _O_BINARY) != -1;
}

FileOutcome readBytes(const std::string& name, std::string& bytes) {
  if (name == "-") return readAll(GetStdHandle(STD_INPUT_HANDLE), bytes);
  const std::wstring native = nativeName(name);
  const HANDLE file = CreateFileW(native.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const FileOutcome outcome = outcomeOf(GetLastError());
    return isFolder(native) ? FileOutcome::folder : outcome;
  }
  const FileOutcome outcome = readAll(file, bytes);
  CloseHandle(file);
  return outcome;
}

}  // namespace platform
