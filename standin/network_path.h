// The path of a database on a server, "port!!!server!!file".
//
// A part that is empty is left out together with its marks, so that the path of a local database is
// its bare file.
#pragma once

#include <string>
#include <string_view>

namespace standin {

struct NetworkPath {
  std::string_view port;
  std::string_view server;
  std::string_view file;
};

/// Throws pathTooLong for a text that the caller's buffer of a path cannot hold.
std::string composePath(const NetworkPath& parts);

/// The parts within `path`, which must outlive them. Throws pathPartTooLong.
NetworkPath parsePath(std::string_view path);

}  // namespace standin
