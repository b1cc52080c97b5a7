#include "standin/network_path.h"

#include "notes/abi.h"
#include "standin/status.h"

namespace standin {
namespace {

constexpr std::string_view portMark = "!!!";
constexpr std::string_view serverMark = "!!";

bool fits(std::string_view text) { return text.size() < NOTES_PATH_SIZE; }

}  // namespace

std::string composePath(const NetworkPath& parts) {
  std::string path;
  if (!parts.port.empty()) path.append(parts.port).append(portMark);
  if (!parts.server.empty()) path.append(parts.server).append(serverMark);
  path.append(parts.file);
  if (!fits(path)) throw Failure(Status::pathTooLong);
  return path;
}

NetworkPath parsePath(std::string_view path) {
  NetworkPath parts{{}, {}, path};
  const auto cutBehind = [&parts](std::string_view& part, std::size_t at, std::string_view mark) {
    part = parts.file.substr(0, at);
    parts.file.remove_prefix(at + mark.size());
  };
  std::size_t mark = parts.file.find(serverMark);
  if (mark != std::string_view::npos && parts.file.substr(mark).starts_with(portMark)) {
    cutBehind(parts.port, mark, portMark);
    mark = parts.file.find(serverMark);
  }
  if (mark != std::string_view::npos) cutBehind(parts.server, mark, serverMark);
  if (!fits(parts.port) || !fits(parts.server) || !fits(parts.file))
    throw Failure(Status::pathPartTooLong);
  return parts;
}

}  // namespace standin
