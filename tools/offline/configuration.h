// What the configuration database says about servers and their recipients.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/line.h"

namespace offline {

/// What is known of the mail files of recipients, by server and path as recipientKey gives them.
using Recipients = std::unordered_map<std::string, store::DatabaseInfo>;

struct Configuration {
  bool isOfAddOn = false;  // holds a profile, or a document whose form begins with "qb"
  bool hasCustomerProfile = false;
  std::vector<std::string> servers;  // the users of the server profiles, none of them empty
  Recipients recipients;
};

Configuration readConfiguration(const std::filesystem::path& file);

/// Equal for paths that lead to the same file of the same server, without regard to the case of
/// ASCII letters and to the two separators.
std::string recipientKey(std::string_view server, std::string_view path);

/// The path of a mail file as the diagnostics open it: the ending is added unless the path has it
/// in small letters, with a full stop before it or without one.
std::string completeMailPath(std::string_view path);

}  // namespace offline
