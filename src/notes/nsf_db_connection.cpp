#include "notes/nsf_db_connection.h"

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"

namespace notes {

using DominoApiTools::errorText;

STATUS OpenDatabase::openExtended(const std::string& path) {
  return NSFDbOpenExtended(path.c_str(), 0, 0, nullptr, &hDb_, nullptr, nullptr);
}

NsfDbConnection::NsfDbConnection(const std::string& path) {
  const STATUS status = NSFDbOpen(path.c_str(), &hDb_);
  if (status != 0) {
    throw DbConnectionError(u"Could not open the database: " + base::toWideFromLocal(path.c_str()) +
                            u": " + errorText(status) + u".");
  }
  isOpen_ = true;
}

NsfDbConnection::~NsfDbConnection() noexcept(false) {
  try {
    close();
  } catch (const DbConnectionError&) {
    if (!failures_.isUnwinding()) throw;
  }
}

DBHANDLE NsfDbConnection::handle() const {
  if (!isOpen_) throw DbConnectionError(u"Database-connection is closed.");
  return hDb_;
}

void NsfDbConnection::close() {
  if (hDb_ == 0 || !isOpen_) return;
  const STATUS status = NSFDbClose(hDb_);
  if (status != 0) {
    throw DbConnectionError(u"Could not close connection to the database: " + errorText(status) +
                            u".");
  }
  isOpen_ = false;
  hDb_ = 0;
}

}  // namespace notes
