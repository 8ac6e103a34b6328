#include "TextEncoding.h"

#include <algorithm>

#include "SysUtils.h"

namespace orv {

const TEncoding* TEncoding::ANSI() {
  static const TEncoding encoding(TKind::ANSI);
  return &encoding;
}

const TEncoding* TEncoding::UTF8() {
  static const TEncoding encoding(TKind::UTF8);
  return &encoding;
}

const TEncoding* TEncoding::Unicode() {
  static const TEncoding encoding(TKind::Unicode);
  return &encoding;
}

const TEncoding* TEncoding::BigEndianUnicode() {
  static const TEncoding encoding(TKind::BigEndianUnicode);
  return &encoding;
}

String TEncoding::EncodingName() const {
  switch (FKind) {
    case TKind::UTF8: return "UTF-8";
    case TKind::Unicode: return "UTF-16LE";
    case TKind::BigEndianUnicode: return "UTF-16BE";
    default: return "ANSI";
  }
}

TBytes TEncoding::GetPreamble() const {
  switch (FKind) {
    case TKind::UTF8: return {0xEF, 0xBB, 0xBF};
    case TKind::Unicode: return {0xFF, 0xFE};
    case TKind::BigEndianUnicode: return {0xFE, 0xFF};
    default: return {};
  }
}

TBytes TEncoding::GetBytes(const String& text) const {
  if (IsUtf16()) return GetBytes(Utf8ToUtf16(text));
  return TBytes(text.begin(), text.end());
}

TBytes TEncoding::GetBytes(const WideString& text) const {
  if (!IsUtf16()) {
    const String utf8 = Utf16ToUtf8(text);
    return TBytes(utf8.begin(), utf8.end());
  }
  TBytes bytes(text.size() * 2);
  const bool big = FKind == TKind::BigEndianUnicode;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto unit = static_cast<uint16_t>(text[i]);
    bytes[2 * i + (big ? 1 : 0)] = static_cast<uint8_t>(unit & 0xFF);
    bytes[2 * i + (big ? 0 : 1)] = static_cast<uint8_t>(unit >> 8);
  }
  return bytes;
}

WideString TEncoding::GetWideString(const uint8_t* bytes, size_t count) const {
  if (!IsUtf16()) return Utf8ToUtf16(String(reinterpret_cast<const char*>(bytes), count));
  WideString text(count / 2, u'\0');
  const bool big = FKind == TKind::BigEndianUnicode;
  for (size_t i = 0; i < text.size(); ++i) {
    const uint8_t first = bytes[2 * i], second = bytes[2 * i + 1];
    text[i] = static_cast<char16_t>(big ? (first << 8) | second : (second << 8) | first);
  }
  return text;
}

String TEncoding::GetString(const uint8_t* bytes, size_t count) const {
  if (IsUtf16()) return Utf16ToUtf8(GetWideString(bytes, count));
  return String(reinterpret_cast<const char*>(bytes), count);
}

size_t TEncoding::GetBufferEncoding(const TBytes& bytes, const TEncoding*& encoding,
                                    const TEncoding* defaultEncoding) {
  auto startsWith = [&bytes](const TEncoding* candidate) {
    const TBytes mark = candidate->GetPreamble();
    return !mark.empty() && bytes.size() >= mark.size() &&
           std::equal(mark.begin(), mark.end(), bytes.begin());
  };
  if (encoding) return startsWith(encoding) ? encoding->GetPreamble().size() : 0;
  for (const TEncoding* candidate : {UTF8(), Unicode(), BigEndianUnicode()}) {
    if (startsWith(candidate)) {
      encoding = candidate;
      return candidate->GetPreamble().size();
    }
  }
  encoding = defaultEncoding ? defaultEncoding : Default();
  return 0;
}

}  // namespace orv
