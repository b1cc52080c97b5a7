// The answer of the operations that need documents, of which this build of the library holds none.
// Those that give no status answer what they document for a failure.
#pragma once

#include "guard.h"
#include "session.h"

namespace standin {

/// The status noDocuments, or notInitialised where there is no session.
inline STATUS refuse() {
  return guard([] {
    session();
    throw Failure(Status::noDocuments);
  });
}

}  // namespace standin
