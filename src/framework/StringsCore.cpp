// TStrings and TWideStrings: lines, objects, name=value access, copying and updates, built on
// the abstract operations a subclass provides.

#include <type_traits>

#include "StringLists.h"
#include "SysUtils.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TStrings)
ORV_IMPLEMENT_CLASS(TWideStrings)

namespace {

template <class To, class From>
To ConvertText(const From& text) {
  if constexpr (std::is_same_v<To, From>) return text;
  else if constexpr (std::is_same_v<To, WideString>) return Utf8ToUtf16(text);
  else return Utf16ToUtf8(text);
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Lines and objects

template <class S>
void TStringsOf<S>::Put(int32_t index, const S& text) {
  TObject* object = GetObject(index);
  Delete(index);
  InsertObject(index, text, object);
}

template <class S>
TObject* TStringsOf<S>::GetObject(int32_t) const {
  return nullptr;
}

template <class S>
void TStringsOf<S>::PutObject(int32_t, TObject*) {}

template <class S>
int32_t TStringsOf<S>::Add(const S& text) {
  const int32_t index = GetCount();
  Insert(index, text);
  return index;
}

template <class S>
int32_t TStringsOf<S>::AddObject(const S& text, TObject* object) {
  const int32_t index = Add(text);
  PutObject(index, object);
  return index;
}

template <class S>
int32_t TStringsOf<S>::AddPair(const S& name, const S& value) {
  return Add(name + CharType(FNameValueSeparator) + value);
}

template <class S>
void TStringsOf<S>::AddStrings(const TStringsOf* strings) {
  Updating([&] {
    const int32_t count = strings->GetCount();  // fixed first: a list may add itself
    for (int32_t i = 0; i < count; ++i) AddObject(strings->Get(i), strings->GetObject(i));
  });
}

template <class S>
void TStringsOf<S>::AddStrings(const std::vector<S>& strings) {
  Updating([&] {
    for (const S& text : strings) Add(text);
  });
}

template <class S>
void TStringsOf<S>::InsertObject(int32_t index, const S& text, TObject* object) {
  Insert(index, text);
  PutObject(index, object);
}

template <class S>
void TStringsOf<S>::Exchange(int32_t index1, int32_t index2) {
  Updating([&] {
    TObject* object = GetObject(index1);
    const S text = Get(index1);
    Put(index1, Get(index2));
    PutObject(index1, GetObject(index2));
    Put(index2, text);
    PutObject(index2, object);
  });
}

template <class S>
void TStringsOf<S>::Move(int32_t curIndex, int32_t newIndex) {
  if (curIndex == newIndex) return;
  Updating([&] {
    const S text = Get(curIndex);
    TObject* object = GetObject(curIndex);
    PutObject(curIndex, nullptr);  // so that a list owning it does not free it on the way
    Delete(curIndex);
    InsertObject(newIndex, text, object);
  });
}

template <class S>
std::vector<S> TStringsOf<S>::ToStringArray() const {
  std::vector<S> strings;
  strings.reserve(static_cast<size_t>(GetCount()));
  for (int32_t i = 0; i < GetCount(); ++i) strings.push_back(Get(i));
  return strings;
}

// ---------------------------------------------------------------------------------------------
// Searching

template <class S>
int32_t TStringsOf<S>::IndexOf(const S& text) const {
  for (int32_t i = 0; i < GetCount(); ++i)
    if (CompareStrings(Get(i), text) == 0) return i;
  return -1;
}

template <class S>
int32_t TStringsOf<S>::IndexOfName(const S& name) const {
  for (int32_t i = 0; i < GetCount(); ++i)
    if (CompareStrings(ExtractName(Get(i)), name) == 0) return i;
  return -1;
}

template <class S>
int32_t TStringsOf<S>::IndexOfObject(TObject* object) const {
  for (int32_t i = 0; i < GetCount(); ++i)
    if (GetObject(i) == object) return i;
  return -1;
}

template <class S>
bool TStringsOf<S>::Equals(const TStringsOf* strings) const {
  if (!strings || strings->GetCount() != GetCount()) return false;
  for (int32_t i = 0; i < GetCount(); ++i)
    if (Get(i) != strings->Get(i)) return false;
  return true;
}

template <class S>
int TStringsOf<S>::CompareStrings(const S& a, const S& b) const {
  return AnsiCompareText(a, b);
}

// ---------------------------------------------------------------------------------------------
// Name=value lines

template <class S>
S TStringsOf<S>::ExtractName(const S& text) const {
  const size_t separator = text.find(CharType(FNameValueSeparator));
  return separator == S::npos ? S() : text.substr(0, separator);
}

template <class S>
S TStringsOf<S>::GetValue(const S& name) const {
  const int32_t index = IndexOfName(name);
  return index < 0 ? S() : GetValueFromIndex(index);
}

template <class S>
void TStringsOf<S>::SetValue(const S& name, const S& value) {
  int32_t index = IndexOfName(name);
  if (value.empty()) {
    if (index >= 0) Delete(index);
    return;
  }
  if (index < 0) index = Add(S());
  Put(index, name + CharType(FNameValueSeparator) + value);
}

template <class S>
S TStringsOf<S>::GetValueFromIndex(int32_t index) const {
  if (index < 0) return S();
  const S text = Get(index);
  const size_t separator = text.find(CharType(FNameValueSeparator));
  return separator == S::npos ? S() : text.substr(separator + 1);
}

template <class S>
void TStringsOf<S>::SetValueFromIndex(int32_t index, const S& value) {
  if (value.empty()) {
    if (index >= 0) Delete(index);
    return;
  }
  if (index < 0) index = Add(S());
  Put(index, GetName(index) + CharType(FNameValueSeparator) + value);
}

// ---------------------------------------------------------------------------------------------
// Copying and updates

template <class S>
void TStringsOf<S>::Assign(TPersistent* source) {
  using OtherS = std::conditional_t<std::is_same_v<S, String>, WideString, String>;
  auto copyFrom = [this](const auto* strings) {
    Updating([&] {
      Clear();
      FDelimiter = strings->GetDelimiter();
      FQuoteChar = strings->GetQuoteChar();
      FNameValueSeparator = strings->GetNameValueSeparator();
      FStrictDelimiter = strings->GetStrictDelimiter();
      FEncoding = strings->GetEncoding();
      FDefaultEncoding = strings->GetDefaultEncoding();
      FWriteBOM = strings->GetWriteBOM();
      for (int32_t i = 0; i < strings->GetCount(); ++i)
        AddObject(ConvertText<S>(strings->Get(i)), strings->GetObject(i));
    });
  };
  if (source == this) return;
  if (auto* strings = dynamic_cast<const TStringsOf<S>*>(source)) return copyFrom(strings);
  if (auto* strings = dynamic_cast<const TStringsOf<OtherS>*>(source)) return copyFrom(strings);
  TPersistent::Assign(source);
}

template <class S>
void TStringsOf<S>::BeginUpdate() {
  if (FUpdateCount == 0) SetUpdateState(true);
  ++FUpdateCount;
}

template <class S>
void TStringsOf<S>::EndUpdate() {
  if (FUpdateCount == 0) return;  // an EndUpdate too many changes nothing
  if (--FUpdateCount == 0) SetUpdateState(false);
}

template <class S>
void TStringsOf<S>::SetUpdateState(bool) {}

template <class S>
void TStringsOf<S>::DefineProperties(TFiler* filer) {
  TPersistent::DefineProperties(filer);
}

template class TStringsOf<String>;
template class TStringsOf<WideString>;

}  // namespace orv
