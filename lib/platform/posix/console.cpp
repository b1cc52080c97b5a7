#include "platform/console.h"

#include <unistd.h>

#include <string>

#include "platform/code_pages.h"
#include "platform/posix/write_all.h"

namespace platform {

void printNarrowLine(std::string_view text) { writeAll(STDOUT_FILENO, std::string(text) += '\n'); }

void printWideLine(std::u16string_view text) { printNarrowLine(wideToUtf8(text)); }

}  // namespace platform
