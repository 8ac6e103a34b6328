// Locale-aware comparison and case mapping through ICU.

#include <unicode/ucasemap.h>
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <cstring>
#include <memory>

#include "SysUtils.h"

namespace orv {

namespace {

struct CollatorCloser {
  void operator()(UCollator* collator) const { ucol_close(collator); }
};
using CollatorPtr = std::unique_ptr<UCollator, CollatorCloser>;

struct CaseMapCloser {
  void operator()(UCaseMap* map) const { ucasemap_close(map); }
};
using CaseMapPtr = std::unique_ptr<UCaseMap, CaseMapCloser>;

// ICU's reading of the "C" locale sorts ASCII by code point (all capitals first); the root
// order, "a" < "B" < "c", is what a user of such a program expects.
const char* CollationLocale() {
  const char* locale = uloc_getDefault();
  return std::strncmp(locale, "en_US_POSIX", 11) == 0 ? "" : locale;
}

CollatorPtr OpenCollator(UColAttributeValue strength) {
  UErrorCode status = U_ZERO_ERROR;
  CollatorPtr collator(ucol_open(CollationLocale(), &status));
  if (U_FAILURE(status)) {
    status = U_ZERO_ERROR;
    collator.reset(ucol_open("", &status));
  }
  if (collator) ucol_setStrength(collator.get(), strength);
  return collator;
}

// Made once, on first use: the sorting paths call these per comparison.
const UCollator* TextCollator() {
  static const CollatorPtr collator = OpenCollator(UCOL_SECONDARY);  // accents, not case
  return collator.get();
}

const UCollator* StrCollator() {
  static const CollatorPtr collator = OpenCollator(UCOL_TERTIARY);
  return collator.get();
}

const UCaseMap* CaseMap() {
  static const CaseMapPtr map = [] {
    UErrorCode status = U_ZERO_ERROR;
    return CaseMapPtr(ucasemap_open(nullptr, 0, &status));
  }();
  return map.get();
}

int CompareUtf8(const UCollator* collator, std::string_view a, std::string_view b) {
  UErrorCode status = U_ZERO_ERROR;
  const UCollationResult result =
      collator ? ucol_strcollUTF8(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                  static_cast<int32_t>(b.size()), &status)
               : UCOL_EQUAL;
  if (!collator || U_FAILURE(status)) return CompareStr(String(a), String(b));
  return static_cast<int>(result);
}

int CompareUtf16(const UCollator* collator, const WideString& a, const WideString& b) {
  if (!collator) return a.compare(b) < 0 ? -1 : (a == b ? 0 : 1);
  return static_cast<int>(ucol_strcoll(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                       static_cast<int32_t>(b.size())));
}

using Utf8CaseFunction = int32_t (*)(const UCaseMap*, char*, int32_t, const char*, int32_t,
                                     UErrorCode*);

String MapCaseUtf8(Utf8CaseFunction map, const String& text) {
  if (text.empty() || !CaseMap()) return text;
  String result(text.size() + text.size() / 2 + 8, '\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = map(CaseMap(), result.data(), static_cast<int32_t>(result.size()),
                               text.data(), static_cast<int32_t>(text.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      result.resize(length);
      continue;
    }
    if (U_FAILURE(status)) return text;
    result.resize(length);
    return result;
  }
  return text;
}

using Utf16CaseFunction = int32_t (*)(UChar*, int32_t, const UChar*, int32_t, const char*,
                                      UErrorCode*);

WideString MapCaseUtf16(Utf16CaseFunction map, const WideString& text) {
  if (text.empty()) return text;
  WideString result(text.size() + 8, u'\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = map(result.data(), static_cast<int32_t>(result.size()), text.data(),
                               static_cast<int32_t>(text.size()), nullptr, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      result.resize(length);
      continue;
    }
    if (U_FAILURE(status)) return text;
    result.resize(length);
    return result;
  }
  return text;
}

}  // namespace

int AnsiCompareText(const String& a, const String& b) { return CompareUtf8(TextCollator(), a, b); }
int AnsiCompareText(std::string_view a, std::string_view b) {
  return CompareUtf8(TextCollator(), a, b);
}
bool AnsiSameText(const String& a, const String& b) { return a == b || AnsiCompareText(a, b) == 0; }
int AnsiCompareStr(const String& a, const String& b) { return CompareUtf8(StrCollator(), a, b); }
bool AnsiSameStr(const String& a, const String& b) { return a == b || AnsiCompareStr(a, b) == 0; }

int AnsiCompareText(const WideString& a, const WideString& b) {
  return CompareUtf16(TextCollator(), a, b);
}
int AnsiCompareStr(const WideString& a, const WideString& b) {
  return CompareUtf16(StrCollator(), a, b);
}

String AnsiUpperCase(const String& text) { return MapCaseUtf8(ucasemap_utf8ToUpper, text); }
String AnsiLowerCase(const String& text) { return MapCaseUtf8(ucasemap_utf8ToLower, text); }
WideString WideUpperCase(const WideString& text) { return MapCaseUtf16(u_strToUpper, text); }
WideString WideLowerCase(const WideString& text) { return MapCaseUtf16(u_strToLower, text); }

}  // namespace orv
