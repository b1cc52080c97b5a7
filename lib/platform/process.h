// What the program asks of its own process.
#pragma once

#include <cstdint>
#include <ctime>

namespace platform {

/// To be called first: from then on a crash or a library that does not load shows no dialog, and a
/// console whose reader has gone, or that is closed, and a file that may not grow further do no
/// harm to the process or its other files.
void prepareProcess();

std::uint32_t processNumber();
std::uint32_t threadNumber();

/// The present moment in seconds since 1970, and a moment in the zone of the process.
std::int64_t currentTime();
std::tm localTime(std::int64_t moment);

}  // namespace platform
