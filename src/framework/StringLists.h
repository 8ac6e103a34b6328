#pragma once
// String lists: the abstract TStrings and its list TStringList, and the same pair over wide
// text, TWideStrings and TWideStringList. Lines carry an optional object each; a list can be
// sorted, read as name=value pairs, joined to delimited text and kept in text files.

#include <functional>
#include <vector>

#include "Persistent.h"
#include "Streams.h"
#include "TextEncoding.h"

namespace orv {

using TNotifyEvent = std::function<void(TObject* Sender)>;

enum TDuplicates : uint8_t { dupIgnore, dupAccept, dupError };

// What TStrings and TWideStrings share, over the text type S (String or WideString). Character
// settings are ASCII characters in both.
//
// Index errors raise EStringListError "List index out of bounds (%d)".
template <class S>
class TStringsOf : public TPersistent {
 public:
  using StringType = S;
  using CharType = typename S::value_type;

  TStringsOf() = default;

  // --- lines and objects
  virtual int32_t GetCount() const = 0;
  int32_t Count() const { return GetCount(); }
  S Strings(int32_t index) const { return Get(index); }
  S operator[](int32_t index) const { return Get(index); }
  void SetStrings(int32_t index, const S& text) { Put(index, text); }
  TObject* Objects(int32_t index) const { return GetObject(index); }
  void SetObjects(int32_t index, TObject* object) { PutObject(index, object); }
  virtual S Get(int32_t index) const = 0;
  virtual void Put(int32_t index, const S& text);
  virtual TObject* GetObject(int32_t index) const;  // none unless a subclass keeps objects
  virtual void PutObject(int32_t index, TObject* object);
  virtual int32_t GetCapacity() const { return GetCount(); }
  virtual void SetCapacity(int32_t) {}

  virtual int32_t Add(const S& text);  // the index it got
  virtual int32_t AddObject(const S& text, TObject* object);
  int32_t AddPair(const S& name, const S& value);
  void Append(const S& text) { Add(text); }
  virtual void AddStrings(const TStringsOf* strings);  // lines and objects
  void AddStrings(const std::vector<S>& strings);
  virtual void Insert(int32_t index, const S& text) = 0;  // index may be Count
  virtual void InsertObject(int32_t index, const S& text, TObject* object);
  virtual void Delete(int32_t index) = 0;
  virtual void Clear() = 0;
  virtual void Exchange(int32_t index1, int32_t index2);
  virtual void Move(int32_t curIndex, int32_t newIndex);
  std::vector<S> ToStringArray() const;

  // --- searching; lines compare through CompareStrings (without case by default)
  virtual int32_t IndexOf(const S& text) const;
  virtual int32_t IndexOfName(const S& name) const;
  virtual int32_t IndexOfObject(TObject* object) const;
  // Same count and the same lines, compared exactly.
  virtual bool Equals(const TStringsOf* strings) const;

  // --- name=value lines: the name is the text before the first NameValueSeparator ('=')
  char GetNameValueSeparator() const { return FNameValueSeparator; }
  void SetNameValueSeparator(char value) { FNameValueSeparator = value; }
  S GetName(int32_t index) const { return ExtractName(Get(index)); }
  S Names(int32_t index) const { return GetName(index); }
  // The value of the first line of that name; empty when there is none.
  S GetValue(const S& name) const;
  S Values(const S& name) const { return GetValue(name); }
  // Sets the value of the first line of that name, adding a line when there is none; an empty
  // value deletes the line.
  void SetValue(const S& name, const S& value);
  // The text after the first separator; empty for a line without one.
  virtual S GetValueFromIndex(int32_t index) const;
  S ValueFromIndex(int32_t index) const { return GetValueFromIndex(index); }
  // Keeps the line's name and replaces its value; an empty value deletes the line, and index
  // -1 adds a line.
  virtual void SetValueFromIndex(int32_t index, const S& value);

  // --- text: lines end with CR LF when written; CR, LF or CR LF end a line when read, and a
  // last line break gives no empty last line
  S GetText() const { return GetTextStr(); }
  void SetText(const S& text) { SetTextStr(text); }

  // --- delimited text. An item is quoted (QuoteChar around it, inner quote characters
  // doubled) when it holds the quote character, the delimiter or, unless StrictDelimiter, a
  // blank or control character. Reading, blanks outside quotes also separate items unless
  // StrictDelimiter. A single empty item is written as two quote characters.
  // The Delimiter (','), QuoteChar ('"') and StrictDelimiter (false) settings.
  char GetDelimiter() const { return FDelimiter; }
  void SetDelimiter(char value) { FDelimiter = value; }
  char GetQuoteChar() const { return FQuoteChar; }
  void SetQuoteChar(char value) { FQuoteChar = value; }
  bool GetStrictDelimiter() const { return FStrictDelimiter; }
  void SetStrictDelimiter(bool value) { FStrictDelimiter = value; }
  S GetDelimitedText() const;
  void SetDelimitedText(const S& text);
  // Delimited text with ',' '"' and blanks separating, whatever the list's own settings.
  S GetCommaText() const;
  void SetCommaText(const S& text);

  // --- copying: lines, objects (shared, not copied: at most one list may own them), the
  // delimiter, quote, separator and strictness settings and the file encoding of any TStrings
  // or TWideStrings
  void Assign(TPersistent* source) override;

  // --- updates: only the outermost BeginUpdate/EndUpdate pair reaches SetUpdateState
  void BeginUpdate();
  void EndUpdate();
  int32_t GetUpdateCount() const { return FUpdateCount; }

  // --- streams and files. Reading, a byte-order mark (UTF-8, UTF-16 LE or BE) selects the
  // encoding unless one is given; without one the default 8-bit encoding stands. The encoding
  // and whether a mark was there are kept, so that writing gives the same bytes back. Files
  // are replaced as a whole (WriteFileReplacing).
  virtual void LoadFromStream(TStream* stream, const TEncoding* encoding = nullptr);
  virtual void SaveToStream(TStream* stream, const TEncoding* encoding = nullptr) const;
  virtual void LoadFromFile(const String& fileName, const TEncoding* encoding = nullptr);
  virtual void SaveToFile(const String& fileName, const TEncoding* encoding = nullptr) const;
  const TEncoding* GetEncoding() const { return FEncoding; }
  const TEncoding* GetDefaultEncoding() const { return FDefaultEncoding; }
  void SetDefaultEncoding(const TEncoding* value) { FDefaultEncoding = value ? value : TEncoding::Default(); }
  bool GetWriteBOM() const { return FWriteBOM; }
  void SetWriteBOM(bool value) { FWriteBOM = value; }

 protected:
  virtual S GetTextStr() const;
  virtual void SetTextStr(const S& text);
  virtual void SetUpdateState(bool updating);
  virtual int CompareStrings(const S& a, const S& b) const;
  S ExtractName(const S& text) const;
  void DefineProperties(TFiler* filer) override;
  [[noreturn]] static void Error(const String& message) { throw EStringListError(message); }
  static void CheckIndex(int32_t index, int32_t limit) {
    if (index < 0 || index >= limit)
      Error("List index out of bounds (" + std::to_string(index) + ")");
  }
  // Runs `body` between BeginUpdate and EndUpdate; EndUpdate runs also when `body` fails.
  template <class F>
  void Updating(F&& body) {
    BeginUpdate();
    try {
      body();
    } catch (...) {
      EndUpdate();
      throw;
    }
    EndUpdate();
  }

 private:
  char FDelimiter = ',';
  char FQuoteChar = '"';
  char FNameValueSeparator = '=';
  bool FStrictDelimiter = false;
  bool FWriteBOM = true;
  int32_t FUpdateCount = 0;
  const TEncoding* FEncoding = nullptr;
  const TEncoding* FDefaultEncoding = TEncoding::Default();
};

extern template class TStringsOf<String>;
extern template class TStringsOf<WideString>;

class TStrings : public TStringsOf<String> {
  ORV_CLASS(TStrings, TPersistent)
};

class TWideStrings : public TStringsOf<WideString> {
  ORV_CLASS(TWideStrings, TPersistent)
};

// The list that keeps lines and objects, over TStrings or TWideStrings.
//
// Sorted lists keep their order on Add (Duplicates decides about equal lines: dupError raises
// EStringListError "String list does not allow duplicates") and refuse Insert, Put and Move
// with EStringListError "Operation not allowed on sorted list". Lines compare with
// AnsiCompareText, or AnsiCompareStr when CaseSensitive. An object that a sorted list did not
// take (an ignored or refused duplicate) stays the caller's.
//
// While OwnsObjects, the list frees an object when its line is deleted or cleared, when another
// object replaces it, and when the list goes.
template <class Base>
class TStringListOf : public Base {
 public:
  using S = typename Base::StringType;
  // Compares two lines of the list by their indexes: negative, zero or positive.
  using TSortCompare = std::function<int(TStringListOf* list, int32_t index1, int32_t index2)>;

  explicit TStringListOf(bool ownsObjects = false) : FOwnsObjects(ownsObjects) {}
  // No pointer may pass for the flag; class records would take it for an owner constructor.
  TStringListOf(const void*) = delete;
  ~TStringListOf() override;

  int32_t GetCount() const override { return static_cast<int32_t>(FList.size()); }
  S Get(int32_t index) const override;
  void Put(int32_t index, const S& text) override;
  TObject* GetObject(int32_t index) const override;
  void PutObject(int32_t index, TObject* object) override;
  int32_t GetCapacity() const override { return static_cast<int32_t>(FList.capacity()); }
  void SetCapacity(int32_t capacity) override;

  int32_t Add(const S& text) override { return AddObject(text, nullptr); }
  int32_t AddObject(const S& text, TObject* object) override;
  void Insert(int32_t index, const S& text) override { InsertObject(index, text, nullptr); }
  void InsertObject(int32_t index, const S& text, TObject* object) override;
  void Delete(int32_t index) override;
  void Clear() override;
  void Exchange(int32_t index1, int32_t index2) override;
  void Move(int32_t curIndex, int32_t newIndex) override;
  int32_t IndexOf(const S& text) const override;

  // In a sorted list: whether `text` is there, and where it is or would go.
  virtual bool Find(const S& text, int32_t& index) const;
  // Sort does nothing in a list that is Sorted already. Both sorts are stable, and a failing
  // comparison leaves the order as it was.
  virtual void Sort();
  virtual void CustomSort(const TSortCompare& compare);

  bool GetSorted() const { return FSorted; }
  void SetSorted(bool value);
  TDuplicates GetDuplicates() const { return FDuplicates; }
  void SetDuplicates(TDuplicates value) { FDuplicates = value; }
  bool GetCaseSensitive() const { return FCaseSensitive; }
  void SetCaseSensitive(bool value);  // a sorted list sorts again
  bool GetOwnsObjects() const { return FOwnsObjects; }
  void SetOwnsObjects(bool value) { FOwnsObjects = value; }

  const TNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent handler) { FOnChange = std::move(handler); }
  const TNotifyEvent& GetOnChanging() const { return FOnChanging; }
  void SetOnChanging(TNotifyEvent handler) { FOnChanging = std::move(handler); }

 protected:
  // Fire OnChange / OnChanging unless an update is running.
  virtual void Changed();
  virtual void Changing();
  void SetUpdateState(bool updating) override;
  int CompareStrings(const S& a, const S& b) const override;
  virtual void InsertItem(int32_t index, const S& text, TObject* object);
  virtual void ExchangeItems(int32_t index1, int32_t index2);

 private:
  struct TItem {
    S String;
    TObject* Object = nullptr;
  };
  void CheckUnsorted() const;

  std::vector<TItem> FList;
  TDuplicates FDuplicates = dupIgnore;
  bool FSorted = false;
  bool FCaseSensitive = false;
  bool FOwnsObjects;
  TNotifyEvent FOnChange;
  TNotifyEvent FOnChanging;
};

extern template class TStringListOf<TStrings>;
extern template class TStringListOf<TWideStrings>;

class TStringList : public TStringListOf<TStrings> {
  ORV_CLASS(TStringList, TStrings)
 public:
  using TStringListOf::TStringListOf;
};

class TWideStringList : public TStringListOf<TWideStrings> {
  ORV_CLASS(TWideStringList, TWideStrings)
 public:
  using TStringListOf::TStringListOf;
};

using TStringListSortCompare = TStringList::TSortCompare;

}  // namespace orv
