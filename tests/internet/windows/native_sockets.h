// The system's own sockets, for the servers of tests.
#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>
