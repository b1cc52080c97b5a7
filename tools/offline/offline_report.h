// The whole of it: a server from exports, and a report from the server.
#pragma once

#include "offline/options.h"

namespace offline {

/// Imports the exports, lays out what belongs to a server, runs the diagnostics and shows where the
/// report lies. Throws Failed, std::system_error and what the JSON library throws if it does not
/// come to a report; what was laid out stays if the diagnostics were started, and is gone if not.
void makeReport(const Options& options);

}  // namespace offline
