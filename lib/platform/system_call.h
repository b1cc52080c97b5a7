// SYSTEM_CALL, the calling convention of the system's libraries.
#pragma once

#ifndef SYSTEM_CALL
#if defined(_WIN32) && !defined(_WIN64)
#define SYSTEM_CALL __stdcall
#else
#define SYSTEM_CALL
#endif
#endif
