#include "standin/database_path.h"

#include "standin/address_books.h"
#include "standin/network_path.h"
#include "standin/status.h"
#include "store/file.h"

namespace standin {
namespace {

bool isSeparator(char c) { return c == '/' || c == '\\'; }

// By the rules of both systems: a path keeps its meaning when it is carried from one to the other.
bool isAbsolute(std::string_view path) {
  return isSeparator(path.front()) || (path.size() > 1 && path[1] == ':');
}

}  // namespace

std::string databasePath(const store::NotesIni& settings, const std::string& dataDirectory,
                         std::string_view path) {
  const NetworkPath parts = parsePath(path);
  requireOwnServer(settings, parts.server);
  if (parts.file.empty()) throw Failure(Status::databaseMissing);
  const std::string folder = isAbsolute(parts.file) ? std::string() : dataDirectory + '/';
  return store::nativePath(folder + std::string(parts.file));
}

}  // namespace standin
