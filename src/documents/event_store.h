// The event documents of the configuration database: what happened to the add-on, one note each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"

namespace documents {

class CreateEventError : public base::Error {
 public:
  using Error::Error;
};

class GetVrxEventsError : public base::Error {
 public:
  using Error::Error;
};

class InsertVrxEventError : public base::Error {
 public:
  using Error::Error;
};

/// The categories, as the numbers that are stored on the notes.
inline constexpr std::int32_t nabImportCategory = 3;
inline constexpr std::int32_t userSyncCategory = 4;
inline constexpr std::int32_t softwareUpdateCategory = 5;

/// One event as it was read.
struct VrxEvent {
  std::u16string categoryText;
  std::u16string eventText;
  std::u16string reported;  ///< In the library's own form of a time.
};

/// Writes one event. Raises CreateEventError, and std::out_of_range for a number below 0
/// or above those of the categories.
void createEvent(const std::u16string& server, std::int32_t category,
                 const std::u16string& message);

/// Adds all events in the order of the search; one that cannot be read has a placeholder. Raises
/// GetVrxEventsError.
void getVrxEvents(std::vector<VrxEvent>& events);

/// Adds one event. Raises InsertVrxEventError.
void loadEvent(NOTEID id, std::vector<VrxEvent>& events);

/// The line that shows an event. It has no indent, whatever the depth.
std::u16string eventLine(const VrxEvent& event, int depth);

}  // namespace documents
