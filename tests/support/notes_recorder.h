// The Notes library with a recorder in front: every call is noted, and single calls can be made to
// fail as the library documents a failure, without reaching it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "notes/api.h"

namespace test {

/// The status of a call that is made to fail. The stand-in library has no words of its own for it.
inline constexpr STATUS failedStatus = 0x2BAD;

/// What an operation answers when it fails. STATUS and WORD are one type, so that the name of the
/// type decides.
template <typename Result>
Result failedResult(const std::string& operation, const std::string& type) {
  if constexpr (std::is_integral_v<Result>) {
    if (type == "STATUS") return static_cast<Result>(failedStatus);
    return operation == "TimeGMToLocal" ? 1 : 0;
  } else if constexpr (!std::is_void_v<Result>) {
    return Result{};
  }
}

struct NotesRecorder {
  std::vector<std::string> calls;
  std::map<std::string, int> counts;

  /// Fails each call for which this answers true, given its name and its number among the calls of
  /// that name, from 1.
  std::function<bool(const std::string& operation, int number)> fails;

  static NotesRecorder& instance() {
    static NotesRecorder recorder;
    return recorder;
  }

  /// Puts the recorder in front of the operations that `notes::api` holds, once, and forgets all
  /// earlier calls and failures.
  static NotesRecorder& install();

  /// Whether this call is to fail.
  bool note(const char* operation) {
    calls.emplace_back(operation);
    const int number = ++counts[operation];
    return fails && fails(operation, number);
  }
};

namespace detail {

inline notes::NotesApi& recordedApi() {
  static notes::NotesApi api{};
  return api;
}

template <auto Member, auto Name>
struct Recorded;

template <typename Result, typename... Arguments,
          Result (NOTES_CALL* notes::NotesApi::*Member)(Arguments...), auto Name>
struct Recorded<Member, Name> {
  static Result NOTES_CALL call(Arguments... arguments) {
    const auto [operation, type] = Name();
    if (NotesRecorder::instance().note(operation)) return failedResult<Result>(operation, type);
    return (recordedApi().*Member)(arguments...);
  }
};

}  // namespace detail

inline NotesRecorder& NotesRecorder::install() {
  if (detail::recordedApi().NotesTerm == nullptr) {
    detail::recordedApi() = notes::api;
#define RECORDER_MEMBER(result, name, arguments)                  \
  notes::api.name = detail::Recorded<&notes::NotesApi::name, [] { \
    return std::pair<const char*, const char*>(#name, #result);   \
  }>::call;
    NOTES_OPERATIONS(RECORDER_MEMBER)
#undef RECORDER_MEMBER
  }
  instance() = {};
  return instance();
}

}  // namespace test
