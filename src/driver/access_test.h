// The proof that the add-on can write in its folder.
#pragma once

#include <string>

#include "base/report_log.h"
#include "configuration/vrx_configuration.h"

namespace driver {

/// Writes a log as the add-on would, by the names of its configuration, and reports whether it
/// opened. It lands in the add-on's folder within the data directory, or where that cannot be made
/// in `reportDirectory`. The file stays.
void testAccess(const configuration::VRXConfiguration& configuration,
                const std::u16string& reportDirectory, const base::Output& output);

}  // namespace driver
