// What the program asks of its own process.
#pragma once

#include <cstdint>

namespace platform {

/// To be called first: from then on a crash or a library that does not load shows no dialog, and a
/// console whose reader has gone, or that is closed, and a file that may not grow further do no
/// harm to the process or its other files.
void prepareProcess();

std::uint32_t processNumber();
std::uint32_t threadNumber();

}  // namespace platform
