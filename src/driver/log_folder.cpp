#include "driver/log_folder.h"

#include "base/paths.h"

namespace driver {

std::u16string makeLogFolder(const std::u16string& dataDirectory, const std::u16string& otherwise) {
  if (!base::createFolder(dataDirectory, u"Quellbright")) return otherwise;
  return dataDirectory + u"//Quellbright";
}

}  // namespace driver
