#include "configuration/decoding_tables.h"

#include "configuration/decoding_data.h"

namespace configuration {

void DecodingTables::fill() {
  for (const auto& [key, number, name] : thresholdRows) {
    thresholdNumbers[key] = number;
    thresholdNames[key] = name;
  }
  for (const auto& [name, code] : languageRows) {
    languageCodes[name] = code;
    languageNames[code] = name;
  }
  languageNames[unknownLanguage.code] = unknownLanguage.name;
  for (const auto& [key, number, name] : logLevelRows) {
    logLevelNumbers[key] = number;
    logLevelNames[number] = name;
  }
  for (const auto& [key, number, name] : dayRows) {
    dayNamesByKey[key] = name;
    dayKeysByName[name] = key;
    dayNumbers[key] = number;
    dayNames[number] = name;
  }
  for (const auto& [key, number, name] : componentRows) {
    componentKeys[key] = number;
    componentNames[number] = name;
    componentNumbers[name] = number;
  }
}

}  // namespace configuration
