#include "documents/event_steps.h"

#include <vector>

#include "documents/event_store.h"
#include "documents/server_profile.h"
#include "notes/domino_api_tools.h"

namespace documents {
namespace {

using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::DominoApiToolsError;

constexpr int eventDepth = 2;

}  // namespace

void createTestEvents(base::ReportLog& report, bool writeToConsole) {
  const base::Output output{report, writeToConsole};
  const auto fail = [&](const base::Error& error) {
    output.consoleFirst(u"Create event error: " + error.message());
  };
  output.consoleFirst(u"Creating quellbright test events.");
  try {
    std::u16string server;
    currentServerName(server);
    createEvent(server, nabImportCategory, u"This is a testmessage in the NABImport-category.");
    createEvent(server, softwareUpdateCategory,
                u"This is a testmessage in the softwareupdate-category.");
    createEvent(server, userSyncCategory, u"This is a testmessage in the Usersync-category.");
  } catch (const CreateEventError& error) {
    fail(error);
  } catch (const DominoApiToolsError& error) {
    fail(error);
  } catch (const DominoApiError& error) {
    fail(error);
  }
  output.consoleFirst(u"Done creating quellbright test events.");
}

void showEvents(base::ReportLog& report, bool writeToConsole) {
  const base::Output output{report, writeToConsole};
  output.consoleFirst(u"Testing Get VRX events:");
  try {
    std::vector<VrxEvent> events;
    getVrxEvents(events);
    for (const VrxEvent& event : events) {
      output.consoleFirst(eventLine(event, eventDepth));
    }
  } catch (const GetVrxEventsError& error) {
    output.consoleFirst(u"Error Testing Get VRX events: " + error.message());
  }
  output.consoleFirst(u"Done Testing Get VRX events.");
}

}  // namespace documents
