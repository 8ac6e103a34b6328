// The process-wide format settings and settings made from a locale.

#include <cstdlib>

#include "LocaleSettings.h"
#include "SysUtils.h"

namespace orv {

namespace {

// The first of the environment variables that is set and not empty.
String EnvLocale(std::initializer_list<const char*> names) {
  for (const char* name : names)
    if (const char* value = std::getenv(name); value && *value) return value;
  return {};
}

}  // namespace

TFormatSettings TFormatSettings::Invariant() { return TFormatSettings(); }

TFormatSettings TFormatSettings::Create(const String& locale) {
  TFormatSettings settings;
  const String numeric = locale.empty() ? EnvLocale({"LC_ALL", "LC_NUMERIC", "LANG"}) : locale;
  const String time = locale.empty() ? EnvLocale({"LC_ALL", "LC_TIME", "LANG"}) : locale;
  detail::ReadLocaleNumbers(settings, detail::IcuLocaleName(numeric));
  detail::ReadLocaleDates(settings, detail::IcuLocaleName(time));
  return settings;
}

TFormatSettings FormatSettings = TFormatSettings::Create();

}  // namespace orv
