// The boundary to the caller, which no exception crosses.
//
// Every exported function does its work in a body handed to guard or guardValue, and begins it with
// requireAll for the pointers that a caller must not leave out. A body writes its outputs last, so
// that they stay untouched when it fails.
#pragma once

#include <new>

#include "standin/status.h"

namespace standin {

/// Throws missingArgument if one of the pointers is null.
template <typename... Pointed>
void requireAll(Pointed*... pointers) {
  const bool isOneMissing = (... || (pointers == nullptr));
  if (isOneMissing) throw Failure(Status::missingArgument);
}

/// Runs `body` and gives the status of how it went.
template <typename Body>
STATUS guard(Body body) noexcept {
  Status status = Status::success;
  try {
    body();
  } catch (Failure& failure) {
    status = failure.status();
    keepWords(failure);
  } catch (const std::bad_alloc&) {
    status = Status::outOfMemory;
  } catch (...) {
    status = Status::internalError;
  }
  return static_cast<STATUS>(status);
}

/// The result of `body`, or `failed`, for the operations that answer something else than a status.
template <typename Result, typename Body>
Result guardValue(Result failed, Body body) noexcept {
  Result result = failed;
  guard([&] { result = body(); });
  return result;
}

}  // namespace standin
