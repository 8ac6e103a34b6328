// The text forms of a string list: lines joined by line breaks, and delimited text.

#include <type_traits>

#include "StringLists.h"

namespace orv {

namespace {

// Characters compare as unsigned codes: the bytes of UTF-8 text are not blanks.
template <class C>
uint32_t Code(C c) {
  return static_cast<std::make_unsigned_t<C>>(c);
}

template <class C>
bool IsBlank(C c) {
  return Code(c) <= ' ';
}

template <class S>
S Quoted(const S& text, typename S::value_type quote) {
  S result(1, quote);
  for (auto c : text) {
    if (c == quote) result += quote;
    result += c;
  }
  result += quote;
  return result;
}

// The quoted item at `pos` (which holds the quote character) with its doubled quotes undone;
// `pos` moves past the closing quote. An item without one runs to the end.
template <class S>
S ExtractQuoted(const S& text, size_t& pos, typename S::value_type quote) {
  S item;
  ++pos;
  while (pos < text.size()) {
    const auto c = text[pos++];
    if (c != quote) {
      item += c;
    } else if (pos < text.size() && text[pos] == quote) {
      item += quote;
      ++pos;
    } else {
      break;
    }
  }
  return item;
}

template <class S>
bool NeedsQuotes(const S& text, char delimiter, char quote, bool strict) {
  for (auto c : text)
    if (Code(c) == Code(quote) || Code(c) == Code(delimiter) || (!strict && Code(c) != 0 && IsBlank(c)))
      return true;
  return false;
}

template <class S>
S JoinDelimited(const TStringsOf<S>& list, char delimiter, char quote, bool strict) {
  using C = typename S::value_type;
  const int32_t count = list.GetCount();
  if (count == 1 && list.Get(0).empty()) return S(2, C(quote));
  S result;
  for (int32_t i = 0; i < count; ++i) {
    const S item = list.Get(i);
    if (i > 0) result += C(delimiter);
    result += NeedsQuotes(item, delimiter, quote, strict) ? Quoted(item, C(quote)) : item;
  }
  return result;
}

// Splits delimited text into items; `add` takes each one.
template <class S, class Add>
void SplitDelimited(const S& text, char delimiter, char quote, bool strict, Add add) {
  using C = typename S::value_type;
  const size_t n = text.size();
  size_t pos = 0;
  auto skipBlanks = [&] {
    if (!strict)
      while (pos < n && IsBlank(text[pos])) ++pos;
  };
  skipBlanks();
  while (pos < n) {
    if (text[pos] == C(quote)) {
      add(ExtractQuoted(text, pos, C(quote)));
    } else {
      const size_t start = pos;
      while (pos < n && (strict || !IsBlank(text[pos])) && text[pos] != C(delimiter)) ++pos;
      add(text.substr(start, pos - start));
    }
    skipBlanks();
    if (pos < n && text[pos] == C(delimiter)) {
      if (pos + 1 == n) add(S());  // a delimiter at the end leaves an empty last item
      ++pos;
      skipBlanks();
    }
  }
}

}  // namespace

template <class S>
S TStringsOf<S>::GetTextStr() const {
  const int32_t count = GetCount();
  S result;
  for (int32_t i = 0; i < count; ++i) {
    result += Get(i);
    result += CharType('\r');
    result += CharType('\n');
  }
  return result;
}

template <class S>
void TStringsOf<S>::SetTextStr(const S& text) {
  Updating([&] {
    Clear();
    const size_t n = text.size();
    size_t pos = 0;
    while (pos < n) {
      const size_t start = pos;
      while (pos < n && text[pos] != CharType('\r') && text[pos] != CharType('\n')) ++pos;
      Add(text.substr(start, pos - start));
      if (pos < n && text[pos] == CharType('\r')) ++pos;
      if (pos < n && text[pos] == CharType('\n')) ++pos;
    }
  });
}

template <class S>
S TStringsOf<S>::GetDelimitedText() const {
  return JoinDelimited(*this, FDelimiter, FQuoteChar, FStrictDelimiter);
}

template <class S>
void TStringsOf<S>::SetDelimitedText(const S& text) {
  Updating([&] {
    Clear();
    SplitDelimited(text, FDelimiter, FQuoteChar, FStrictDelimiter, [this](const S& item) { Add(item); });
  });
}

template <class S>
S TStringsOf<S>::GetCommaText() const {
  return JoinDelimited(*this, ',', '"', false);
}

template <class S>
void TStringsOf<S>::SetCommaText(const S& text) {
  Updating([&] {
    Clear();
    SplitDelimited(text, ',', '"', false, [this](const S& item) { Add(item); });
  });
}

#define ORV_INSTANTIATE_TEXT(S)                              \
  template S TStringsOf<S>::GetTextStr() const;              \
  template void TStringsOf<S>::SetTextStr(const S&);         \
  template S TStringsOf<S>::GetDelimitedText() const;        \
  template void TStringsOf<S>::SetDelimitedText(const S&);   \
  template S TStringsOf<S>::GetCommaText() const;            \
  template void TStringsOf<S>::SetCommaText(const S&);

ORV_INSTANTIATE_TEXT(String)
ORV_INSTANTIATE_TEXT(WideString)

}  // namespace orv
