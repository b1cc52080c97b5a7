/* The documents that the library of the benchmark holds, and how many a search finds. */
#ifndef DOCUMENTS_H
#define DOCUMENTS_H

#include <stdio.h>
#include <stdlib.h>

#include "notes/abi.h"

enum kind { events, filters, updates, persons, kinds };

#define CATEGORY "Software Updates"
#define EVENT "Pattern file 4711 was installed on this server without a restart."
#define MOMENT "30-05-2012 14:07:00"
#define UPDATE "Pattern file 4711"
#define VERSION "4.2.0.17"
#define SERVER "CN=Mail01/O=Example"
#define MAIL_FILE "mail/aleonard.nsf"
#define NAME "CN=Ada Leonard/OU=Sales/O=Example"
#define FILTER_KEY "user000000@example.org"
enum { DIGITS_END = 10 }; /* where the digits of a key end */
enum { NAMES = 2 };

/* Reads DOCUMENTS_TO_FIND: a number for each kind, in their order, missing ones 0. */
static inline void readCounts(DWORD* counts) {
  const char* text = getenv("DOCUMENTS_TO_FIND");
  if (text == NULL) return;
  sscanf(text, "%u %u %u %u", &counts[events], &counts[filters], &counts[updates],
         &counts[persons]);
}

#endif
