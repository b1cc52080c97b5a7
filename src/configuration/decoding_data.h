// What the keys that are stored in the active configuration stand for, one row for each.
#pragma once

#include <cstdint>

namespace configuration {

struct KeyRow {
  const char16_t* key;
  std::int32_t number;
  const char16_t* name;
};

/// The number is the spam probability in percent from which on a message counts as spam.
inline constexpr KeyRow thresholdRows[] = {
    {u"0", 20, u"Very low"}, {u"1", 30, u"Low"},       {u"2", 50, u"Medium"},
    {u"3", 65, u"High"},     {u"4", 85, u"Very high"},
};

inline constexpr KeyRow logLevelRows[] = {
    {u"0", 0, u"Minimal"}, {u"1", 1, u"Low"},   {u"2", 2, u"Normal"},
    {u"3", 3, u"High"},    {u"4", 4, u"Debug"},
};

/// The week starts on Sunday.
inline constexpr KeyRow dayRows[] = {
    {u"1", 1, u"Sunday"},   {u"2", 2, u"Monday"}, {u"3", 3, u"Tuesday"},  {u"4", 4, u"Wednesday"},
    {u"5", 5, u"Thursday"}, {u"6", 6, u"Friday"}, {u"7", 7, u"Saturday"},
};

/// What an update can renew.
inline constexpr KeyRow componentRows[] = {
    {u"1", 1, u"Scanning Engine"},
    {u"2", 2, u"Domino Module"},
};

/// Languages are stored by name, or as their code in decimal, which is the Windows language
/// identifier.
struct LanguageRow {
  const char16_t* name;
  std::int32_t code;
};

inline constexpr LanguageRow languageRows[] = {
    {u"Arabic", 1025},    {u"Chinese (Taiwan)", 1028},
    {u"Danish", 1030},    {u"German", 1031},
    {u"Greek", 1032},     {u"Finnish", 1035},
    {u"French", 1036},    {u"Hebrew", 1037},
    {u"Italian", 1040},   {u"Japanese", 1041},
    {u"Korean", 1042},    {u"Dutch", 1043},
    {u"Norwegian", 1044}, {u"Russian", 1049},
    {u"Swedish", 1053},   {u"Thai", 1054},
    {u"Armenian", 1067},  {u"Syriac", 1114},
    {u"Amharic", 1118},   {u"Chinese (China)", 2052},
    {u"English", 2057},   {u"Mongolian", 2128},
    {u"Tibetan", 2129},   {u"Spanish", 3082},
};

/// What a code of no language is called; no name leads to it.
inline constexpr LanguageRow unknownLanguage = {u"unknown language", 0};

}  // namespace configuration
