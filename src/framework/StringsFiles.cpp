// String lists in streams and text files, with their encodings and byte-order marks.

#include <type_traits>

#include "StringLists.h"

namespace orv {

template <class S>
void TStringsOf<S>::LoadFromStream(TStream* stream, const TEncoding* encoding) {
  const TBytes bytes = stream->ReadRemainingBytes();
  const size_t markSize = TEncoding::GetBufferEncoding(bytes, encoding, FDefaultEncoding);
  const uint8_t* text = bytes.data() + markSize;
  const size_t size = bytes.size() - markSize;
  if constexpr (std::is_same_v<S, String>) SetTextStr(encoding->GetString(text, size));
  else SetTextStr(encoding->GetWideString(text, size));
  // Kept for writing back: the same encoding, with a mark only when there was one.
  FEncoding = encoding;
  FWriteBOM = markSize > 0;
}

template <class S>
void TStringsOf<S>::SaveToStream(TStream* stream, const TEncoding* encoding) const {
  if (!encoding) encoding = FEncoding ? FEncoding : FDefaultEncoding;
  TBytes bytes = FWriteBOM ? encoding->GetPreamble() : TBytes();
  const TBytes text = encoding->GetBytes(GetTextStr());
  bytes.insert(bytes.end(), text.begin(), text.end());
  stream->WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
}

template <class S>
void TStringsOf<S>::LoadFromFile(const String& fileName, const TEncoding* encoding) {
  TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(&file, encoding);
}

template <class S>
void TStringsOf<S>::SaveToFile(const String& fileName, const TEncoding* encoding) const {
  WriteFileReplacing(fileName, [&](TStream& file) { SaveToStream(&file, encoding); });
}

#define ORV_INSTANTIATE_FILES(S)                                                     \
  template void TStringsOf<S>::LoadFromStream(TStream*, const TEncoding*);           \
  template void TStringsOf<S>::SaveToStream(TStream*, const TEncoding*) const;       \
  template void TStringsOf<S>::LoadFromFile(const String&, const TEncoding*);        \
  template void TStringsOf<S>::SaveToFile(const String&, const TEncoding*) const;

ORV_INSTANTIATE_FILES(String)
ORV_INSTANTIATE_FILES(WideString)

}  // namespace orv
