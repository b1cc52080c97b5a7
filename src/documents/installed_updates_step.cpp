#include "documents/installed_updates_step.h"

#include "documents/installed_updates.h"

namespace documents {

void showInstalledUpdates(base::ReportLog& report, bool writeToConsole) {
  constexpr int sectionDepth = 5;
  const base::Output output{report, writeToConsole};
  output.consoleFirst(u"SEARCHING FOR INSTALLED UPDATES...");
  try {
    InstalledUpdates updates;
    updates.load();
    output.consoleFirst(updates.print(sectionDepth));
  } catch (const InstalledUpdates::InstalledUpdatesError& error) {
    output.consoleFirst(error.message());
  }
}

}  // namespace documents
