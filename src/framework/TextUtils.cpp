// Text: UTF conversion, trimming, ASCII case, quoting and replacing.

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <vector>

#include "SysUtils.h"

namespace orv {

namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }
char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? char(c - 'a' + 'A') : c; }
char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; }

int Sign(int value) { return (value > 0) - (value < 0); }

}  // namespace

// ---------------------------------------------------------------------------------------------
// UTF-8 and UTF-16

String Utf16ToUtf8(const WideString& text) {
  if (text.empty()) return {};
  String result(text.size() * 3, '\0');  // a UTF-16 unit never takes more than 3 bytes
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(result.data(), static_cast<int32_t>(result.size()), &length, text.data(),
                     static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
  result.resize(U_SUCCESS(status) ? length : 0);
  return result;
}

WideString Utf8ToUtf16(const String& text) {
  if (text.empty()) return {};
  WideString result(text.size(), u'\0');  // a byte never becomes more than one unit
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(result.data(), static_cast<int32_t>(result.size()), &length, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
  result.resize(U_SUCCESS(status) ? length : 0);
  return result;
}

String Utf8Truncate(const String& text, size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  size_t cut = maxBytes;
  while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
  return text.substr(0, cut);
}

// ---------------------------------------------------------------------------------------------
// Trimming and ASCII case

String Trim(const String& text) {
  size_t begin = 0, end = text.size();
  while (begin < end && IsBlank(text[begin])) ++begin;
  while (end > begin && IsBlank(text[end - 1])) --end;
  return text.substr(begin, end - begin);
}

String TrimLeft(const String& text) {
  size_t begin = 0;
  while (begin < text.size() && IsBlank(text[begin])) ++begin;
  return text.substr(begin);
}

String TrimRight(const String& text) {
  size_t end = text.size();
  while (end > 0 && IsBlank(text[end - 1])) --end;
  return text.substr(0, end);
}

String UpperCase(const String& text) {
  String result = text;
  std::transform(result.begin(), result.end(), result.begin(), UpperAscii);
  return result;
}

String LowerCase(const String& text) {
  String result = text;
  std::transform(result.begin(), result.end(), result.begin(), LowerAscii);
  return result;
}

int CompareStr(const String& a, const String& b) { return Sign(a.compare(b)); }
bool SameStr(const String& a, const String& b) { return a == b; }

// Letters are folded to upper case, as the platform does: "_" sorts before "a" and "A".
int CompareText(const String& a, const String& b) {
  const size_t common = std::min(a.size(), b.size());
  for (size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(UpperAscii(a[i]));
    const auto y = static_cast<unsigned char>(UpperAscii(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool SameText(const String& a, const String& b) {
  return a.size() == b.size() && CompareText(a, b) == 0;
}

// ---------------------------------------------------------------------------------------------
// Quoting

String QuotedStr(const String& text) { return AnsiQuotedStr(text, '\''); }

String AnsiQuotedStr(const String& text, char quote) {
  String result;
  result.reserve(text.size() + 2);
  result += quote;
  for (char c : text) {
    result += c;
    if (c == quote) result += quote;
  }
  result += quote;
  return result;
}

String AnsiDequotedStr(const String& text, char quote) {
  if (text.empty() || text[0] != quote) return text;
  String result;
  size_t i = 1;
  for (; i < text.size(); ++i) {
    if (text[i] != quote) {
      result += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == quote) {
      result += quote;
      ++i;
    } else {
      ++i;  // the closing quote; what follows it is dropped
      break;
    }
  }
  // Nothing inside, or no closing quote before the end: only a text standing between quotes
  // counts as quoted, anything else stays as it is.
  const bool usedUp = i >= text.size();
  if ((result.empty() || usedUp) && text.back() != quote) return text;
  return result;
}

// ---------------------------------------------------------------------------------------------
// Replacing

namespace {

// The case-folded code points of a text, each with the byte offset it starts at.
struct FoldedText {
  std::vector<UChar32> Chars;
  std::vector<size_t> Offsets;
};

FoldedText Fold(const String& text) {
  FoldedText folded;
  const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
  const auto length = static_cast<int32_t>(text.size());
  for (int32_t i = 0; i < length;) {
    folded.Offsets.push_back(static_cast<size_t>(i));
    UChar32 c;
    U8_NEXT(bytes, i, length, c);
    folded.Chars.push_back(u_foldCase(c, U_FOLD_CASE_DEFAULT));
  }
  folded.Offsets.push_back(text.size());
  return folded;
}

String ReplaceIgnoringCase(const String& text, const String& from, const String& to, bool all) {
  const FoldedText haystack = Fold(text), needle = Fold(from);
  String result;
  size_t copied = 0;  // bytes of text already in result
  auto at = haystack.Chars.begin();
  while (true) {
    at = std::search(at, haystack.Chars.end(), needle.Chars.begin(), needle.Chars.end());
    if (at == haystack.Chars.end()) break;
    const size_t index = at - haystack.Chars.begin();
    const size_t begin = haystack.Offsets[index];
    const size_t end = haystack.Offsets[index + needle.Chars.size()];
    result.append(text, copied, begin - copied).append(to);
    copied = end;
    at += needle.Chars.size();
    if (!all) break;
  }
  return result.append(text, copied);
}

}  // namespace

String StringReplace(const String& text, const String& from, const String& to, unsigned flags) {
  if (from.empty()) return text;
  const bool all = flags & rfReplaceAll;
  if (flags & rfIgnoreCase) return ReplaceIgnoringCase(text, from, to, all);
  String result;
  size_t copied = 0;
  for (size_t at; (at = text.find(from, copied)) != String::npos;) {
    result.append(text, copied, at - copied).append(to);
    copied = at + from.size();
    if (!all) break;
  }
  return result.append(text, copied);
}

}  // namespace orv
