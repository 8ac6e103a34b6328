#include "SysUtils.h"
#include "TypInfo.h"

namespace orv::typinfo_detail {

String NarrowOf(const WideString& text) { return Utf16ToUtf8(text); }

WideString WideOf(const String& text) { return Utf8ToUtf16(text); }

}  // namespace orv::typinfo_detail
