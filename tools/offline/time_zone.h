// The zone as the stand-in library takes it from its variable Timezone.
#pragma once

#include <optional>
#include <string_view>

namespace offline {

/// Whole hours west of GMT, -23 to 23, behind a sign or none and with blanks around; an empty text
/// is 0. Nothing for any other text.
std::optional<int> readTimezone(std::string_view text);

}  // namespace offline
