#pragma once
// Text encodings of text files: the 8-bit encoding (UTF-8 bytes as they stand), UTF-8 and
// UTF-16 in both byte orders, with their byte-order marks.

#include "System.h"

namespace orv {

class TEncoding {
 public:
  enum class TKind : uint8_t { ANSI, UTF8, Unicode, BigEndianUnicode };

  // The 8-bit encoding of text files without a byte-order mark. The platform's ANSI code page
  // has no counterpart here, so it stands for the UTF-8 bytes as they are: no preamble, and no
  // byte changed on the way in or out.
  static const TEncoding* ANSI();
  static const TEncoding* Default() { return ANSI(); }
  static const TEncoding* UTF8();
  static const TEncoding* Unicode();  // UTF-16, little-endian
  static const TEncoding* BigEndianUnicode();

  TEncoding(const TEncoding&) = delete;
  TEncoding& operator=(const TEncoding&) = delete;

  TKind Kind() const { return FKind; }
  String EncodingName() const;
  TBytes GetPreamble() const;  // the byte-order mark; none for ANSI
  TBytes GetBytes(const String& text) const;
  TBytes GetBytes(const WideString& text) const;
  // Text of bytes without their preamble; invalid UTF-16 becomes U+FFFD, a last odd byte of
  // UTF-16 is dropped.
  String GetString(const uint8_t* bytes, size_t count) const;
  WideString GetWideString(const uint8_t* bytes, size_t count) const;

  // The length of the byte-order mark at the start of `bytes`. With `encoding` null, the mark
  // decides it (UTF-8, UTF-16 LE or BE) and `defaultEncoding` stands when there is none; with an
  // encoding given, only that encoding's own mark is recognised.
  static size_t GetBufferEncoding(const TBytes& bytes, const TEncoding*& encoding,
                                  const TEncoding* defaultEncoding = Default());

 private:
  explicit TEncoding(TKind kind) : FKind(kind) {}
  bool IsUtf16() const { return FKind == TKind::Unicode || FKind == TKind::BigEndianUnicode; }
  TKind FKind;
};

}  // namespace orv
