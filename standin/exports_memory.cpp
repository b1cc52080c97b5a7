// Memory blocks, and the address books, which come in one. Compiled formulas are freed like blocks.
#include <utility>

#include "standin/address_books.h"
#include "standin/caller_text.h"
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"

using namespace standin;

void* NOTES_CALL OSLockObject(HANDLE block) {
  return guardValue<void*>(nullptr, [&] { return session().blocks.at(block).data(); });
}

BOOL NOTES_CALL OSUnlockObject(HANDLE block) {
  return guardValue(BOOL{0}, [&] {
    session().blocks.at(block);
    return BOOL{1};
  });
}

STATUS NOTES_CALL OSMemFree(HANDLE block) {
  return guard([&] {
    if (session().formulas.contains(block))
      session().formulas.close(block);
    else
      session().blocks.close(block);
  });
}

STATUS NOTES_CALL NAMEGetAddressBooks(const char* server, WORD, WORD* count, WORD* length,
                                      HANDLE* block) {
  return guard([&] {
    requireAll(count, length, block);
    AddressBooks books = addressBooks(session().settings, textFrom(server));
    const auto bytes = static_cast<WORD>(books.block.size());
    *block = books.count == 0 ? 0 : session().blocks.add(std::move(books.block));
    *count = books.count;
    *length = bytes;
  });
}
