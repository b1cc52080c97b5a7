// Databases.
#include <algorithm>
#include <memory>
#include <string>

#include "standin/caller_text.h"
#include "standin/database_path.h"
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"
#include "standin/time_date.h"

using namespace standin;

namespace {

std::shared_ptr<Database> open(const char* path) {
  Session& current = session();
  return current.cache.open(databasePath(current.settings, current.dataDirectory, textFrom(path)));
}

}  // namespace

STATUS NOTES_CALL NSFDbOpen(const char* path, DBHANDLE* db) {
  return guard([&] {
    requireAll(path, db);
    *db = session().databases.add(open(path));
  });
}

STATUS NOTES_CALL NSFDbOpenExtended(const char* path, WORD, HANDLE, TIMEDATE*, DBHANDLE* db,
                                    TIMEDATE* data_modified, TIMEDATE* non_data_modified) {
  return guard([&] {
    requireAll(path, db);
    const std::shared_ptr<Database> database = open(path);
    // A file has one time for all that is in it.
    const TIMEDATE changed = timeDateOf(database->changed());
    *db = session().databases.add(database);
    if (data_modified != nullptr) *data_modified = changed;
    if (non_data_modified != nullptr) *non_data_modified = changed;
  });
}

STATUS NOTES_CALL NSFDbClose(DBHANDLE db) {
  return guard([&] { session().databases.close(db); });
}

STATUS NOTES_CALL NSFDbInfoGet(DBHANDLE db, char* info) {
  return guard([&] {
    requireAll(info);
    const Database& database = *session().databases.at(db);
    std::fill_n(info, NOTES_DBINFO_SIZE, '\0');
    copyText(database.info().title, info, NOTES_DBINFO_SIZE);
  });
}

void NOTES_CALL NSFDbInfoParse(char* info, WORD what, char* buffer, WORD size) {
  guard([&] {
    requireAll(info, buffer);
    // The title is all that the information holds.
    const std::string title(info, std::find(info, info + NOTES_DBINFO_SIZE, '\0'));
    copyText(what == INFOPARSE_TITLE ? title : std::string(), buffer, size);
  });
}

STATUS NOTES_CALL NSFDbReplicaInfoGet(DBHANDLE db, DBREPLICAINFO* info) {
  return guard([&] {
    requireAll(info);
    DBREPLICAINFO result{};
    result.ID = timeDateOfReplica(session().databases.at(db)->info().replicaId);
    *info = result;
  });
}
