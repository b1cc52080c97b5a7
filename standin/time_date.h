// Points in time as callers have them.
//
// A TIMEDATE is hundredths of a second since midnight GMT and, in the low 24 bits of its second
// word, the Julian day number; inside the library it is a Moment. One of zeros is no time. Local
// time is GMT less the hours of the zone, which counts westward; there is no daylight saving.
#pragma once

#include <chrono>
#include <cstdint>

#include "notes/abi.h"
#include "store/moment.h"

namespace standin {

/// Both throw impossibleTime.
store::Moment momentOf(const TIMEDATE& time);
TIMEDATE timeDateOf(store::Moment moment);

TIMEDATE currentTime();

/// A replica id has the form of a time, whose high word stands second.
inline TIMEDATE timeDateOfReplica(std::uint64_t replicaId) {
  return {{static_cast<DWORD>(replicaId), static_cast<DWORD>(replicaId >> 32U)}};
}

/// Fills the ten parts of `time` with the local time of its GM. Throws impossibleTime.
void fillLocalParts(TIME& time, std::chrono::hours zone);

}  // namespace standin
