#pragma once
// Reading a locale's number, currency and date conventions from ICU into format settings.

#include "SysUtils.h"

namespace orv::detail {

// The ICU name of a POSIX locale name ("de_DE.UTF-8" -> "de_DE"); empty for "C", "POSIX", an
// empty name, or a locale ICU has no data for.
String IcuLocaleName(const String& posixName);

// Each leaves the settings as they are when `icuLocale` is empty.
void ReadLocaleNumbers(TFormatSettings& settings, const String& icuLocale);
void ReadLocaleDates(TFormatSettings& settings, const String& icuLocale);

// An ICU date pattern ("d. MMMM y", "h:mm a") in the platform's format letters. The pattern's
// own date and time separators become "/" and ":"; other letters are quoted.
String PlatformDateFormat(const std::u16string& pattern, char16_t dateSeparator,
                          char16_t timeSeparator, bool fullYear);

}  // namespace orv::detail
