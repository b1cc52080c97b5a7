// The certificates of the TLS tests of this system.
#pragma once

#include <cstdlib>
#include <stdexcept>

#include "support/folders.h"
#include "support/temporary_folder.h"

namespace test {

/// A folder with the certificates of make_certificates.sh, made once for a program.
inline const TemporaryFolder& certificates() {
  static const TemporaryFolder folder;
  static const int status = std::system(
      ("'" + inRepository("tests/lib/replay/internet/make_certificates.sh") + "' " + folder.text())
          .c_str());
  if (status != 0) throw std::runtime_error(contentOf(folder.path() / "log.txt"));
  return folder;
}

}  // namespace test
