// One open Notes database, for the length of one operation.
//
// The rest of the program never holds a database handle of its own: it makes a local connection,
// asks it for the handle and lets it close. A connection is never shared and never reopened, so
// what looks like one action usually opens several in a row.
#pragma once

#include <string>

#include "base/error.h"
#include "notes/abi.h"
#include "notes/failure_watch.h"

namespace notes {

/// The database of all the add-on's documents, relative to the Notes data directory.
inline constexpr const char* configurationDatabase = "QBConf.nsf";
/// The same name as messages show it.
inline constexpr const char16_t* configurationDatabaseWide = u"QBConf.nsf";

/// A database that is open, until a connection takes it over.
class OpenDatabase {
 public:
  /// Opens the database at a complete path, its server included. Gives the library's status.
  STATUS openExtended(const std::string& path);

  DBHANDLE handle() const { return hDb_; }

 private:
  DBHANDLE hDb_ = 0;
};

class NsfDbConnection {
 public:
  class DbConnectionError : public base::Error {
   public:
    using Error::Error;
  };

  /// Opens the database at `path`, as the Notes library takes paths. Raises DbConnectionError.
  explicit NsfDbConnection(const std::string& path);

  /// Takes over a database that is open already.
  explicit NsfDbConnection(const OpenDatabase& open) : hDb_(open.handle()), isOpen_(true) {}

  NsfDbConnection(const NsfDbConnection&) = delete;
  NsfDbConnection& operator=(const NsfDbConnection&) = delete;

  /// Closes, if that has not happened. Raises DbConnectionError, so that a failed close is a
  /// failure of the operation; not while another failure is on its way out, which then goes on
  /// alone.
  ~NsfDbConnection() noexcept(false);

  /// Raises DbConnectionError if the connection is closed.
  DBHANDLE handle() const;

  /// Does nothing where it has been done. Raises DbConnectionError, and the database still counts
  /// as open, so that the destructor tries once more.
  void close();

 private:
  DBHANDLE hDb_ = 0;
  bool isOpen_ = false;
  FailureWatch failures_;
};

}  // namespace notes
