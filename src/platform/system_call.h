// SYSTEM_CALL, the calling convention of the system's libraries, comes from the build: __stdcall on
// 32-bit Windows, nothing elsewhere.
#pragma once

#ifndef SYSTEM_CALL
#error "SYSTEM_CALL, the calling convention of the system's libraries, is not defined"
#endif
