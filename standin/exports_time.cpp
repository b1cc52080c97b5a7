// Times and the settings of their texts.
#include <algorithm>
#include <cstring>

#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/session.h"
#include "standin/time_date.h"
#include "standin/time_text.h"

using namespace standin;

void NOTES_CALL OSCurrentTIMEDATE(TIMEDATE* now) {
  guard([&] {
    requireAll(now);
    *now = currentTime();
  });
}

void NOTES_CALL OSGetIntlSettings(INTLFORMAT* settings, WORD size) {
  guard([&] {
    requireAll(settings);
    const INTLFORMAT own = ownSettings(session().zone);
    std::memcpy(settings, &own, std::min<std::size_t>(size, sizeof own));
  });
}

STATUS NOTES_CALL ConvertTextToTIMEDATE(const INTLFORMAT* settings, const TFMT* format, char** text,
                                        WORD maximum_length, TIMEDATE* time) {
  return guard([&] {
    requireAll(settings, format, text, time);
    requireAll(*text);
    char* const end = std::find(*text, *text + maximum_length, '\0');
    *time = readTime(*settings, *format, {*text, end}, session().zone);
    *text = end;
  });
}

BOOL NOTES_CALL TimeGMToLocal(TIME* time) {
  return guardValue(BOOL{1}, [&] {
    requireAll(time);
    fillLocalParts(*time, session().zone);
    return BOOL{0};
  });
}
