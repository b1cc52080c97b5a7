#define SECURITY_WIN32
#include "platform/security.h"

#include <windows.h>
//
#include <security.h>

#include <cstddef>

namespace platform {
namespace {

// The table's records have names of their own, so that no code above needs the system's headers.
// They are the system's records all the same:
static_assert(sizeof(SecurityContext) == sizeof(CtxtHandle));
static_assert(sizeof(SecurityBuffer) == sizeof(SecBuffer));
static_assert(offsetof(SecurityBuffer, pvBuffer) == offsetof(SecBuffer, pvBuffer));
static_assert(sizeof(SecurityBufferList) == sizeof(SecBufferDesc));
static_assert(offsetof(SecurityBufferList, pBuffers) == offsetof(SecBufferDesc, pBuffers));

template <typename Member, typename Operation>
void take(Member& member, Operation* operation) {
  member = reinterpret_cast<Member>(operation);
}

SecurityApi systemSecurity() {
  SecurityApi api{};
  take(api.EncryptMessage, ::EncryptMessage);
  take(api.DecryptMessage, ::DecryptMessage);
  take(api.FreeContextBuffer, ::FreeContextBuffer);
  take(api.DeleteSecurityContext, ::DeleteSecurityContext);
  return api;
}

}  // namespace

SecurityApi security = systemSecurity();

}  // namespace platform
