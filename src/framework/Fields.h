#pragma once
// Fields: the typed views of a data set's current record. Every field reads and writes its value
// through its data set (GetFieldData / SetFieldData) in the buffer form of its data type:
//
//   ftString, ftFixedChar, ftGuid   8-bit (UTF-8) characters, then a 0 byte      Size + 1 bytes
//   ftWideString, ftFixedWideChar   UTF-16 code units, then a 0 unit             (Size + 1) * 2
//   ftSmallint / ftWord             int16_t / uint16_t
//   ftInteger, ftAutoInc / ftLongWord   int32_t / uint32_t
//   ftShortint / ftByte             int8_t / uint8_t
//   ftLargeint                      int64_t
//   ftBoolean                       int16_t: -1 true, 0 false
//   ftFloat, ftCurrency, ftExtended double;  ftSingle float
//   ftDate, ftTime, ftDateTime      plain: TDateTime as double; native: TDateTimeRec
//   ftBCD                           plain: Currency (raw int64); native: TBcd
//   ftFMTBcd                        TBcd
//   ftTimeStamp / ftTimeStampOffset TSQLTimeStamp / TSQLTimeStampOffset
//   ftBytes, ftVarBytes             plain: a Variant byte array; native: the raw bytes (varbytes
//                                   with a 2-byte length first)
//   ftBlob, ftMemo, ftGraphic, ftWideMemo, ftVariant (and the other blob types)   a Variant
//   ftInterface / ftIDispatch       an IInterfacePtr / IDispatchPtr
//
// The reader sizes the buffer (GetDataSize for the native form); the data set fills it. Strings
// are written whole: the data set cuts what it hands back to Size bytes (never splitting a UTF-8
// code point) or Size UTF-16 units. An empty TValueBuffer, like a null pointer, is no buffer:
// GetFieldData then only answers whether there is a value, and SetFieldData writes Null.
//
// Buffers that hold an object. A Variant, an IInterfacePtr or an IDispatchPtr is never a row of
// bytes to copy: whoever makes such a buffer constructs the object in it, and only assignment
// moves a value in or out (BufferObjectOf tells which object a buffer of a type holds).
//  - Pointer form: the pointer points at a constructed object. GetFieldData assigns the value
//    to it; SetFieldData copies the value from it.
//  - Byte-array form: the buffer belongs to a TValueBufferObject<T>, which constructs a T in it
//    and destroys it when it goes. The data set reaches the object with
//    ValueBufferObject<T>(Buffer) and assigns to it or copies from it as above; it never
//    resizes, copies, clears or frees such a buffer, nor writes its bytes.
// Fields read through the pointer form (no allocation per read) and write through the
// byte-array form (a data field written that way counts as a change of the record's data).

#include <cassert>
#include <cstring>
#include <new>
#include <unordered_map>

#include "FMTBcd.h"
#include "FieldDefs.h"
#include "SqlTimSt.h"

namespace orv {

class TObjectField;
class TDataSetField;
class TLookupList;

// The native form of dates and times: days since 0001-01-01 plus one (ftDate), milliseconds
// since midnight (ftTime), or milliseconds since 0001-01-01 (ftDateTime).
union TDateTimeRec {
  int32_t Date;
  int32_t Time;
  double DateTime;
};

// ---------------------------------------------------------------------------------------------
// Buffers that hold an object (see the rule at the top of this file)

enum class TBufferObject { None, Variant, Interface, Dispatch };

// The object a buffer of `Type` holds in the given form; None for plain bytes.
TBufferObject BufferObjectOf(TFieldType Type, bool NativeFormat = true);

// A TValueBuffer with one constructed T in it (Variant, IInterfacePtr or IDispatchPtr); the T
// is destroyed with it.
template <class T>
class TValueBufferObject {
  static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__,
                "a vector's block is aligned for any type up to the default new alignment");

 public:
  TValueBufferObject() : FBuffer(sizeof(T)) { ::new (FBuffer.data()) T(); }
  explicit TValueBufferObject(const T& Value) : FBuffer(sizeof(T)) {
    ::new (FBuffer.data()) T(Value);
  }
  TValueBufferObject(const TValueBufferObject&) = delete;
  TValueBufferObject& operator=(const TValueBufferObject&) = delete;
  ~TValueBufferObject() { Get().~T(); }

  TValueBuffer& Buffer() { return FBuffer; }
  T& Get() { return *std::launder(reinterpret_cast<T*>(FBuffer.data())); }

 private:
  TValueBuffer FBuffer;
};

// The object in a buffer made by TValueBufferObject<T>.
template <class T>
T& ValueBufferObject(TValueBuffer& Buffer) {
  assert(Buffer.size() == sizeof(T));
  return *std::launder(reinterpret_cast<T*>(Buffer.data()));
}
template <class T>
const T& ValueBufferObject(const TValueBuffer& Buffer) {
  assert(Buffer.size() == sizeof(T));
  return *std::launder(reinterpret_cast<const T*>(Buffer.data()));
}

// ---------------------------------------------------------------------------------------------
// TFields

// The fields of a data set or of an object field, in field order. Freeing the list (or Clear)
// frees the fields in it; a field freed on its own leaves the list. Names are found through a
// hash index (without regard to case) that is rebuilt after the fields change.
class TFields : public TObject {
  ORV_CLASS(TFields, TObject)
 public:
  explicit TFields(TDataSet* ADataSet);
  ~TFields() override;

  void Add(TField* Field);
  void Remove(TField* Field);
  void Clear();  // frees the fields
  // EDatabaseError SFieldNameMissing / SDuplicateFieldName, naming the data set.
  void CheckFieldName(const String& FieldName) const;
  // Raises SFieldNotFound for a name in a ";" list that is not a field.
  void CheckFieldNames(const String& FieldNames) const;
  TField* FindField(const String& FieldName) const;    // compared without case; null if missing
  TField* FieldByName(const String& FieldName) const;  // raises SFieldNotFound with the data set
  TField* FieldByNumber(int32_t FieldNo) const;
  void GetFieldNames(TStrings* List) const;
  int IndexOf(const TField* Field) const;
  int GetCount() const { return static_cast<int>(FList.size()); }
  TField* GetField(int Index) const;  // EDatabaseError SFieldIndexError outside the range
  TField* operator[](int Index) const { return GetField(Index); }
  void SetFieldIndex(TField* Field, int Value);
  TDataSet* GetDataSet() const { return FDataSet; }
  // The object field whose sub-fields these are; null for a data set's fields.
  TObjectField* GetParentField() const { return FParentField; }
  // A data set takes fields of every kind, an object field only data fields.
  TFieldKinds GetValidFieldKinds() const;
  const TNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent Value) { FOnChange = std::move(Value); }

 protected:
  virtual void Changed();

 private:
  friend class TField;
  friend class TObjectField;

  struct TNameHash {
    size_t operator()(const String& Name) const noexcept;
  };
  struct TNameEqual {
    bool operator()(const String& A, const String& B) const noexcept;
  };
  void RebuildIndex() const;
  void FreeFields();

  TDataSet* FDataSet;
  TObjectField* FParentField = nullptr;
  std::vector<TField*> FList;
  mutable std::unordered_map<String, TField*, TNameHash, TNameEqual> FIndex;
  mutable bool FIndexValid = false;
  TNotifyEvent FOnChange;
};

// A field: one column of a data set's current record, or of an object field.
class TField : public TComponent {
  ORV_CLASS(TField, TComponent)
 public:
  explicit TField(TComponent* AOwner);
  // A field freed on its own closes its data set (fields change only while it is closed) and
  // leaves its field list; one freed by its list (TFields::Clear) just goes.
  ~TField() override;

  // From another field: its value; from null: Clear.
  void Assign(TPersistent* Source) override;
  // Sets a value through the As... setter of its kind: Null and Unassigned clear; integers,
  // Booleans, floats, currency, dates, text, decimals, time stamps and byte arrays go to the
  // matching setter, anything else to Value. SFieldValueError for what no setter takes.
  void AssignValue(const Variant& Value);
  virtual void Clear();  // sets Null
  void FocusControl();   // deFocusControl to the links of an open data set
  // The value in the current record buffer: true when not Null; the buffer receives it. While
  // OnValidate runs, the value being validated.
  bool GetData(TValueBuffer& Buffer, bool NativeFormat = true) const;
  bool GetData(void* Buffer, bool NativeFormat = true) const;
  void SetData(const TValueBuffer& Buffer, bool NativeFormat = true);
  void SetData(const void* Buffer, bool NativeFormat = true);
  // A field class that serves several data types takes the one of its definition.
  virtual void SetFieldType(TFieldType Value);
  // Runs OnValidate with the value about to be written; raises to refuse it.
  void Validate(const TValueBuffer& Buffer);
  void Validate(const void* Buffer);
  virtual bool IsValidChar(char InputChar) const;
  static bool IsBlob() { return false; }
  virtual bool GetIsBlob() const { return false; }
  // Refills the lookup cache from the lookup data set (opened for the time it takes).
  void RefreshLookupList();

  // Values: each class overrides the accessors its data type supports; the others raise
  // AccessError. SetAsVariant clears for Null and passes anything else to SetVarValue.
  virtual TBcd GetAsBCD() const;
  virtual void SetAsBCD(const TBcd& Value);
  virtual bool GetAsBoolean() const;
  virtual void SetAsBoolean(bool Value);
  // The raw buffer (native form) by default.
  virtual TBytes GetAsBytes() const;
  virtual void SetAsBytes(const TBytes& Value);
  virtual Currency GetAsCurrency() const;
  virtual void SetAsCurrency(Currency Value);
  virtual TDateTime GetAsDateTime() const;
  virtual void SetAsDateTime(TDateTime Value);
  virtual TSQLTimeStamp GetAsSQLTimeStamp() const;
  virtual void SetAsSQLTimeStamp(const TSQLTimeStamp& Value);
  virtual double GetAsFloat() const;
  virtual void SetAsFloat(double Value);
  virtual int32_t GetAsInteger() const;
  virtual void SetAsInteger(int32_t Value);
  virtual int64_t GetAsLargeInt() const;
  virtual void SetAsLargeInt(int64_t Value);
  // The class description ("(Blob)", upper case when not Null) unless the class says more.
  virtual String GetAsString() const;
  virtual void SetAsString(const String& Value);
  virtual WideString GetAsWideString() const;
  virtual void SetAsWideString(const WideString& Value);
  virtual Variant GetAsVariant() const;
  void SetAsVariant(const Variant& Value);
  Variant GetValue() const { return GetAsVariant(); }
  void SetValue(const Variant& Value) { SetAsVariant(Value); }
  // The value before the edit (dsOldValue), the pending one (dsNewValue), the stored one
  // (dsCurValue), read with the data set switched to that state for the read.
  Variant GetOldValue() const;
  Variant GetNewValue() const;
  void SetNewValue(const Variant& Value);
  Variant GetCurValue() const;
  virtual bool GetIsNull() const;

  // Text: DisplayText for showing, EditText (the platform's Text) for editing; OnGetText and
  // OnSetText take precedence over the field's own formatting (GetText / SetText).
  String GetDisplayText() const;
  String GetEditText() const;
  void SetEditText(const String& Value);

  // Identity and layout
  TDataSet* GetDataSet() const { return FDataSet; }
  // Moves the field into the data set's fields (both closed); EDatabaseError for a duplicate
  // name.
  virtual void SetDataSet(TDataSet* ADataSet);
  const String& GetFieldName() const { return FFieldName; }
  void SetFieldName(const String& Value);
  // The name with the names of the parent object fields before it, joined by "."; an array
  // element ("Parts[2]") follows its array's full name directly.
  String GetFullName() const;
  TFieldType GetDataType() const { return FDataType; }
  TFieldKind GetFieldKind() const { return FFieldKind; }
  void SetFieldKind(TFieldKind Value);  // closed data set; SInvalidFieldKind where not allowed
  int32_t GetFieldNo() const { return FFieldNo; }
  int32_t GetSize() const { return FSize; }
  void SetSize(int32_t Value);  // checked by CheckTypeSize
  // The bytes of the field's buffer (native form).
  virtual int32_t GetDataSize() const;
  int32_t GetOffset() const { return FOffset; }
  int GetIndex() const;  // in its field list; -1 in none
  void SetIndex(int Value);
  TObjectField* GetParentField() const { return FParentField; }
  void SetParentField(TObjectField* AField);
  bool GetCalculated() const { return FFieldKind == fkCalculated; }
  void SetCalculated(bool Value);
  bool GetLookup() const { return FFieldKind == fkLookup; }
  void SetLookup(bool Value);
  bool GetIsIndexField() const;
  virtual bool GetCanModify() const;

  // Display
  String GetDisplayLabel() const;             // the field name while none is set
  void SetDisplayLabel(const String& Value);  // the field name itself is stored as none
  bool IsDisplayLabelStored() const { return !FDisplayLabel.empty(); }
  String GetDisplayName() const;    // the label, else the field name
  int32_t GetDisplayWidth() const;  // the default width while none is set (0)
  void SetDisplayWidth(int32_t Value);
  bool IsDisplayWidthStored() const { return FDisplayWidth > 0; }
  TAlignment GetAlignment() const { return FAlignment; }
  void SetAlignment(TAlignment Value);
  bool GetVisible() const { return FVisible; }
  void SetVisible(bool Value);
  bool GetReadOnly() const { return FReadOnly; }
  void SetReadOnly(bool Value);
  bool GetRequired() const { return FRequired; }
  void SetRequired(bool Value) { FRequired = Value; }
  const String& GetEditMask() const { return FEditMask; }
  void SetEditMask(const String& Value);
  const String& GetDefaultExpression() const { return FDefaultExpression; }
  void SetDefaultExpression(const String& Value) { FDefaultExpression = Value; }
  TProviderFlags GetProviderFlags() const { return FProviderFlags; }
  void SetProviderFlags(TProviderFlags Value) { FProviderFlags = Value; }
  const String& GetOrigin() const { return FOrigin; }
  void SetOrigin(const String& Value) { FOrigin = Value; }

  // Lookup settings: the value of LookupResultField of the LookupDataSet record whose
  // LookupKeyFields equal this data set's KeyFields. Changed only while the data set is closed.
  TDataSet* GetLookupDataSet() const { return FLookupDataSet; }
  void SetLookupDataSet(TDataSet* Value);  // SCircularDataLink for the field's own data set
  const String& GetKeyFields() const { return FKeyFields; }
  void SetKeyFields(const String& Value);
  const String& GetLookupKeyFields() const { return FLookupKeyFields; }
  void SetLookupKeyFields(const String& Value);
  const String& GetLookupResultField() const { return FLookupResultField; }
  void SetLookupResultField(const String& Value);
  // With the cache, lookup values come from a list filled once when the field is bound.
  bool GetLookupCache() const { return FLookupCache; }
  void SetLookupCache(bool Value);
  TLookupList* GetLookupList() const { return FLookupList.get(); }

  // For form files: a field's parent is its object field, else its data set.
  void SetParentComponent(TComponent* AParent);
  TComponent* GetParentComponent() const override;
  bool HasParent() const override { return true; }

  // Events
  const TFieldNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TFieldNotifyEvent Value) { FOnChange = std::move(Value); }
  const TFieldNotifyEvent& GetOnValidate() const { return FOnValidate; }
  void SetOnValidate(TFieldNotifyEvent Value) { FOnValidate = std::move(Value); }
  const TFieldGetTextEvent& GetOnGetText() const { return FOnGetText; }
  void SetOnGetText(TFieldGetTextEvent Value) { FOnGetText = std::move(Value); }
  const TFieldSetTextEvent& GetOnSetText() const { return FOnSetText; }
  void SetOnSetText(TFieldSetTextEvent Value) { FOnSetText = std::move(Value); }

 protected:
  // "Cannot access field '%s' as type %s".
  [[noreturn]] void AccessError(const String& TypeName) const;
  void CheckInactive() const;
  // Raises SInvalidFieldSize when `Value` is not a size this field class allows.
  virtual void CheckTypeSize(int32_t Value) const;
  void Change();  // runs OnChange
  // The data set tells the field that its value changed in the record buffer (the
  // deFieldChange of this field): runs OnChange.
  void DataChanged();
  // Binding to the open data set (the data set binds every field of its flat field list, sub-
  // fields included): lookup fields check their settings and fill their cache, data-set fields
  // make and open their nested data set.
  virtual void Bind(bool Binding);
  virtual void FreeBuffers();
  virtual int32_t GetDefaultWidth() const;
  // The field's own text (no events): DisplayText true for showing, false for editing.
  virtual void GetText(String& Text, bool DisplayText) const;
  // Parses an edit text; the base class sets it as the string value.
  virtual void SetText(const String& Value);
  // deLayoutChange (or deDataSetChange) to the open data set's links.
  void PropertyChanged(bool LayoutAffected);
  void SetDataType(TFieldType Value);
  void SetFieldNo(int32_t Value) { FFieldNo = Value; }
  void SetOffset(int32_t Value) { FOffset = Value; }
  // "(ClassName)" without the T and the "Field" ending; upper case when not Null.
  virtual String GetClassDesc() const;
  // Sets a value that is not Null.
  virtual void SetVarValue(const Variant& Value);
  // Writes one value of a plain type (not a string, not an object) through the byte-array
  // form.
  template <class T>
  void SetPlainData(const T& Value, bool NativeFormat = true) {
    static_assert(std::is_trivially_copyable_v<T>);
    TValueBuffer Buffer(sizeof(T));
    std::memcpy(Buffer.data(), &Value, sizeof(T));
    SetData(Buffer, NativeFormat);
  }
  // SLookupInfoError unless the key fields (and with `All` the lookup data set and its fields)
  // are set and exist.
  void ValidateLookupInfo(bool All) const;

  void Notification(TComponent* AComponent, TOperation Operation) override;

 private:
  friend class TDataSet;
  friend class TFields;
  friend class TFieldDef;
  friend class TObjectField;

  // The value being validated, in `NativeFormat`, copied into `Buffer`.
  bool ReadPendingValue(void* Buffer, bool NativeFormat) const;
  // The size of the plain form (the native one for types with a single form).
  int32_t PlainDataSize() const;
  Variant GetStateValue(TDataSetState State) const;
  void FillLookupList();
  void SetDataSetOnly(TDataSet* ADataSet) { FDataSet = ADataSet; }

  TDataSet* FDataSet = nullptr;
  TFields* FFields = nullptr;
  String FFieldName;
  TFieldType FDataType = ftUnknown;
  TFieldKind FFieldKind = fkData;
  TAlignment FAlignment = taLeftJustify;
  bool FReadOnly = false;
  bool FVisible = true;
  bool FRequired = false;
  bool FValidating = false;
  bool FValueBufferNative = true;
  bool FLookupCache = false;
  int32_t FSize = 0;
  int32_t FOffset = 0;
  int32_t FFieldNo = 0;
  int32_t FDisplayWidth = 0;
  String FDisplayLabel;
  String FEditMask;
  String FDefaultExpression;
  String FOrigin;
  TProviderFlags FProviderFlags{pfInUpdate, pfInWhere};
  TDataSet* FLookupDataSet = nullptr;
  String FKeyFields;
  String FLookupKeyFields;
  String FLookupResultField;
  std::unique_ptr<TLookupList> FLookupList;
  TObjectField* FParentField = nullptr;
  // The value being written, for the As... getters inside OnValidate; null writes Null.
  const void* FValueBuffer = nullptr;
  TFieldNotifyEvent FOnChange;
  TFieldNotifyEvent FOnValidate;
  TFieldGetTextEvent FOnGetText;
  TFieldSetTextEvent FOnSetText;
};

// The cache of a lookup field: key values (one, or an array for several key fields) to result
// values.
class TLookupList {
 public:
  void Add(const Variant& AKey, const Variant& AValue);
  void Clear();
  int GetCount() const { return static_cast<int>(FList.size()); }
  // Null when the key is Null or not cached.
  Variant ValueOfKey(const Variant& AKey) const;

 private:
  std::vector<std::pair<Variant, Variant>> FList;
};

// ---------------------------------------------------------------------------------------------
// Text

class TStringField : public TField {
  ORV_CLASS(TStringField, TField)
 public:
  explicit TStringField(TComponent* AOwner);  // Size 20
  // ftFixedChar takes FixedChar; ftGuid and ftString are taken as they are.
  void SetFieldType(TFieldType Value) override;
  bool GetFixedChar() const { return FFixedChar; }
  void SetFixedChar(bool Value);
  bool GetTransliterate() const { return FTransliterate; }
  void SetTransliterate(bool Value) { FTransliterate = Value; }
  // The value as stored, or false for Null.
  bool GetValue(String& Value) const;
  using TField::GetValue;

  // A text beginning with T, t, Y or y is true; true is written "T", false "F".
  bool GetAsBoolean() const override;
  void SetAsBoolean(bool Value) override;
  // The other kinds parse and write the text as StrToDateTime, StrToFloat, StrToInt do.
  TDateTime GetAsDateTime() const override;
  void SetAsDateTime(TDateTime Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;  // written whole; the data set cuts
  WideString GetAsWideString() const override;
  void SetAsWideString(const WideString& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  int32_t GetDefaultWidth() const override;
  void SetVarValue(const Variant& Value) override;

 private:
  bool FFixedChar = false;
  bool FTransliterate = true;
};

class TWideStringField : public TStringField {
  ORV_CLASS(TWideStringField, TStringField)
 public:
  explicit TWideStringField(TComponent* AOwner);
  void SetFieldType(TFieldType Value) override;  // ftFixedWideChar takes FixedChar
  bool GetValue(WideString& Value) const;
  using TField::GetValue;

  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  WideString GetAsWideString() const override;
  void SetAsWideString(const WideString& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void SetVarValue(const Variant& Value) override;
};

class TGuidField : public TStringField {
  ORV_CLASS(TGuidField, TStringField)
 public:
  explicit TGuidField(TComponent* AOwner);  // Size 38

 protected:
  void CheckTypeSize(int32_t Value) const override;
};

// ---------------------------------------------------------------------------------------------
// Numbers

// Numbers with DisplayFormat and EditFormat pictures (FormatFloat), right-aligned.
class TNumericField : public TField {
  ORV_CLASS(TNumericField, TField)
 public:
  explicit TNumericField(TComponent* AOwner);
  const String& GetDisplayFormat() const { return FDisplayFormat; }
  void SetDisplayFormat(const String& Value);
  const String& GetEditFormat() const { return FEditFormat; }
  void SetEditFormat(const String& Value);
  // Digits and signs; the decimal separator and an exponent for fractional kinds.
  bool IsValidChar(char InputChar) const override;

 protected:
  // SFieldRangeError "%g is not a valid value for field '%s'. The allowed range is %g to %g".
  [[noreturn]] void RangeError(double Value, double Min, double Max) const;
  // The picture for the text: the display format for showing, else the edit format, and the
  // display format when no edit format is set.
  const String& TextFormat(bool DisplayText) const;

 private:
  String FDisplayFormat;
  String FEditFormat;
};

class TIntegerField : public TNumericField {
  ORV_CLASS(TIntegerField, TNumericField)
 public:
  explicit TIntegerField(TComponent* AOwner);
  int32_t GetMinValue() const { return FMinValue; }
  void SetMinValue(int32_t Value);
  int32_t GetMaxValue() const { return FMaxValue; }
  void SetMaxValue(int32_t Value);
  bool GetValue(int32_t& Value) const;
  using TField::GetValue;

  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;  // "" clears; SInvalidIntegerValue
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  // SFieldRangeError outside MinValue..MaxValue (when either is set), else outside the range
  // of the data type.
  void CheckRange(int64_t Value) const;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

  int32_t FMinRange = INT32_MIN;
  int32_t FMaxRange = INT32_MAX;

 private:
  int32_t FMinValue = 0;
  int32_t FMaxValue = 0;
};

class TSmallintField : public TIntegerField {
  ORV_CLASS(TSmallintField, TIntegerField)
 public:
  explicit TSmallintField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TShortintField : public TIntegerField {
  ORV_CLASS(TShortintField, TIntegerField)
 public:
  explicit TShortintField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TWordField : public TIntegerField {
  ORV_CLASS(TWordField, TIntegerField)
 public:
  explicit TWordField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TByteField : public TIntegerField {
  ORV_CLASS(TByteField, TIntegerField)
 public:
  explicit TByteField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TAutoIncField : public TIntegerField {
  ORV_CLASS(TAutoIncField, TIntegerField)
 public:
  explicit TAutoIncField(TComponent* AOwner);
};

class TLongWordField : public TNumericField {
  ORV_CLASS(TLongWordField, TNumericField)
 public:
  explicit TLongWordField(TComponent* AOwner);
  bool GetValue(uint32_t& Value) const;
  using TField::GetValue;

  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
};

class TLargeintField : public TNumericField {
  ORV_CLASS(TLargeintField, TNumericField)
 public:
  explicit TLargeintField(TComponent* AOwner);
  bool GetValue(int64_t& Value) const;
  using TField::GetValue;

  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
};

// Double precision; Currency true shows money; Precision (15) significant digits by default.
class TFloatField : public TNumericField {
  ORV_CLASS(TFloatField, TNumericField)
 public:
  explicit TFloatField(TComponent* AOwner);
  bool GetCurrency() const { return FCurrency; }
  void SetCurrency(bool Value);
  int32_t GetPrecision() const { return FPrecision; }
  void SetPrecision(int32_t Value);
  double GetMinValue() const { return FMinValue; }
  void SetMinValue(double Value);
  double GetMaxValue() const { return FMaxValue; }
  void SetMaxValue(double Value);
  bool GetValue(double& Value) const;
  using TField::GetValue;

  Currency GetAsCurrency() const override;
  void SetAsCurrency(Currency Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;  // "" clears; SInvalidFloatValue
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckRange(double Value) const;  // when MinValue or MaxValue is set
  // Without formats: currency formatting (ffCurrency to show, ffFixed to edit) when Currency,
  // else ffGeneral with Precision digits.
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
  int32_t FMaxPrecision = 15;

 private:
  bool FCurrency = false;
  int32_t FPrecision = 15;
  double FMinValue = 0;
  double FMaxValue = 0;
};

class TCurrencyField : public TFloatField {
  ORV_CLASS(TCurrencyField, TFloatField)
 public:
  explicit TCurrencyField(TComponent* AOwner);  // Currency true
};

class TExtendedField : public TFloatField {
  ORV_CLASS(TExtendedField, TFloatField)
 public:
  explicit TExtendedField(TComponent* AOwner);
};

class TSingleField : public TFloatField {
  ORV_CLASS(TSingleField, TFloatField)
 public:
  explicit TSingleField(TComponent* AOwner);  // Precision 7 (and at most 7)

  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;
};

// Currency values in a BCD column: plain form Currency, native form TBcd.
class TBCDField : public TNumericField {
  ORV_CLASS(TBCDField, TNumericField)
 public:
  explicit TBCDField(TComponent* AOwner);  // Size (scale) 4
  bool GetCurrency() const { return FCurrency; }
  void SetCurrency(bool Value);
  int32_t GetPrecision() const { return FPrecision; }
  void SetPrecision(int32_t Value);
  Currency GetMinValue() const { return FMinValue; }
  void SetMinValue(Currency Value);
  Currency GetMaxValue() const { return FMaxValue; }
  void SetMaxValue(Currency Value);
  bool GetValue(Currency& Value) const;
  using TField::GetValue;

  // Reads and writes the plain form (Currency).
  TBcd GetAsBCD() const override;
  void SetAsBCD(const TBcd& Value) override;
  Currency GetAsCurrency() const override;
  void SetAsCurrency(Currency Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  bool FCurrency = false;
  int32_t FPrecision = 0;
  Currency FMinValue;
  Currency FMaxValue;
};

class TFMTBCDField : public TNumericField {
  ORV_CLASS(TFMTBCDField, TNumericField)
 public:
  explicit TFMTBCDField(TComponent* AOwner);  // Size (scale) 8, Precision 15
  bool GetCurrency() const { return FCurrency; }
  void SetCurrency(bool Value);
  int32_t GetPrecision() const { return FPrecision; }
  void SetPrecision(int32_t Value);
  const String& GetMinValue() const { return FMinValue; }
  void SetMinValue(const String& Value);
  const String& GetMaxValue() const { return FMaxValue; }
  void SetMaxValue(const String& Value);
  bool GetValue(TBcd& Value) const;
  using TField::GetValue;

  TBcd GetAsBCD() const override;
  void SetAsBCD(const TBcd& Value) override;
  Currency GetAsCurrency() const override;
  void SetAsCurrency(Currency Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  bool FCurrency = false;
  int32_t FPrecision = 15;
  String FMinValue;
  String FMaxValue;
};

// ---------------------------------------------------------------------------------------------
// Booleans, dates and times

// DisplayValues "True;False" by default: the texts for true and false, either may be empty.
class TBooleanField : public TField {
  ORV_CLASS(TBooleanField, TField)
 public:
  explicit TBooleanField(TComponent* AOwner);
  const String& GetDisplayValues() const { return FDisplayValues; }
  void SetDisplayValues(const String& Value);
  bool GetValue(bool& Value) const;
  using TField::GetValue;

  bool GetAsBoolean() const override;
  void SetAsBoolean(bool Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;  // "" clears; SInvalidBoolValue
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  int32_t GetDefaultWidth() const override;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  String FDisplayValues;
  String FTextValues[2];  // false, true
};

// Date and time: text with DisplayFormat, else ShortDateFormat and LongTimeFormat (the time
// left out at exactly midnight); TDateField and TTimeField use only their part.
class TDateTimeField : public TField {
  ORV_CLASS(TDateTimeField, TField)
 public:
  explicit TDateTimeField(TComponent* AOwner);
  const String& GetDisplayFormat() const { return FDisplayFormat; }
  void SetDisplayFormat(const String& Value);
  bool GetValue(TDateTime& Value) const;
  using TField::GetValue;

  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  TDateTime GetAsDateTime() const override;
  void SetAsDateTime(TDateTime Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;  // "" clears; the platform's parse
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  int32_t GetDefaultWidth() const override;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  void GetTextOf(TDateTime Value, String& Text, bool DisplayText) const;

  String FDisplayFormat;
};

class TDateField : public TDateTimeField {
  ORV_CLASS(TDateField, TDateTimeField)
 public:
  explicit TDateField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TTimeField : public TDateTimeField {
  ORV_CLASS(TTimeField, TDateTimeField)
 public:
  explicit TTimeField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TSQLTimeStampField : public TField {
  ORV_CLASS(TSQLTimeStampField, TField)
 public:
  explicit TSQLTimeStampField(TComponent* AOwner);
  const String& GetDisplayFormat() const { return FDisplayFormat; }
  void SetDisplayFormat(const String& Value);

  TDateTime GetAsDateTime() const override;
  void SetAsDateTime(TDateTime Value) override;
  TSQLTimeStamp GetAsSQLTimeStamp() const override;
  void SetAsSQLTimeStamp(const TSQLTimeStamp& Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  String FDisplayFormat;
};

class TSQLTimeStampOffsetField : public TSQLTimeStampField {
  ORV_CLASS(TSQLTimeStampOffsetField, TSQLTimeStampField)
 public:
  explicit TSQLTimeStampOffsetField(TComponent* AOwner);
  TSQLTimeStampOffset GetAsSQLTimeStampOffset() const;
  void SetAsSQLTimeStampOffset(const TSQLTimeStampOffset& Value);

  TDateTime GetAsDateTime() const override;
  void SetAsDateTime(TDateTime Value) override;
  TSQLTimeStamp GetAsSQLTimeStamp() const override;
  void SetAsSQLTimeStamp(const TSQLTimeStamp& Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
};

// ---------------------------------------------------------------------------------------------
// Binary and blob values

class TBinaryField : public TField {
  ORV_CLASS(TBinaryField, TField)
 public:
  explicit TBinaryField(TComponent* AOwner);  // Size 16

  TBytes GetAsBytes() const override;
  void SetAsBytes(const TBytes& Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  Variant GetAsVariant() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;  // a byte array; SInvalidVarByteArray
};

class TBytesField : public TBinaryField {
  ORV_CLASS(TBytesField, TBinaryField)
 public:
  explicit TBytesField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

class TVarBytesField : public TBinaryField {
  ORV_CLASS(TVarBytesField, TBinaryField)
 public:
  explicit TVarBytesField(TComponent* AOwner);

  int32_t GetDataSize() const override;
};

// Large values read and written through the data set's blob streams (CreateBlobStream).
class TBlobField : public TField {
  ORV_CLASS(TBlobField, TField)
 public:
  explicit TBlobField(TComponent* AOwner);
  static bool IsBlob() { return true; }
  bool GetIsBlob() const override { return true; }

  void Clear() override;
  void LoadFromStream(TStream* Stream);
  void SaveToStream(TStream* Stream) const;
  void LoadFromFile(const String& FileName);
  void SaveToFile(const String& FileName) const;
  int32_t GetBlobSize() const;
  // The blob type; the data type unless set otherwise (a memo field is ftMemo).
  TFieldType GetBlobType() const;
  void SetBlobType(TFieldType Value);
  bool GetModified() const;
  void SetModified(bool Value);
  bool GetTransliterate() const { return FTransliterate; }
  void SetTransliterate(bool Value) { FTransliterate = Value; }
  TBlobDisplayValue GetDisplayValue() const { return FDisplayValue; }
  void SetDisplayValue(TBlobDisplayValue Value);
  void SetFieldType(TFieldType Value) override;  // any blob type

  // Values go through the data set's blob stream (CreateBlobStream); a data set that has none
  // gives them as the Variant of the buffer form.
  TBytes GetAsBytes() const override;
  void SetAsBytes(const TBytes& Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  WideString GetAsWideString() const override;
  void SetAsWideString(const WideString& Value) override;
  Variant GetAsVariant() const override;
  bool GetIsNull() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void FreeBuffers() override;
  // By DisplayValue: the class description, the text, the text clipped with "..." or the
  // class description when the text is wider than DisplayWidth (these two only when showing).
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
  int32_t GetDataSize() const override { return sizeof(Variant); }

 private:
  bool IsWideText() const { return GetDataType() == ftWideMemo; }
  TBytes ReadBlob() const;
  void WriteBlob(const void* Data, size_t Size);

  bool FModified = false;
  bool FTransliterate = true;
  int32_t FModifiedRecord = -1;
  TBlobDisplayValue FDisplayValue = dvClass;
};

class TMemoField : public TBlobField {
  ORV_CLASS(TMemoField, TBlobField)
 public:
  explicit TMemoField(TComponent* AOwner);

  Variant GetAsVariant() const override;
};

class TWideMemoField : public TBlobField {
  ORV_CLASS(TWideMemoField, TBlobField)
 public:
  explicit TWideMemoField(TComponent* AOwner);

  Variant GetAsVariant() const override;
};

class TGraphicField : public TBlobField {
  ORV_CLASS(TGraphicField, TBlobField)
 public:
  explicit TGraphicField(TComponent* AOwner);
};

// ---------------------------------------------------------------------------------------------
// Variants and interfaces

class TVariantField : public TField {
  ORV_CLASS(TVariantField, TField)
 public:
  explicit TVariantField(TComponent* AOwner);

  bool GetAsBoolean() const override;
  void SetAsBoolean(bool Value) override;
  TDateTime GetAsDateTime() const override;
  void SetAsDateTime(TDateTime Value) override;
  double GetAsFloat() const override;
  void SetAsFloat(double Value) override;
  int32_t GetAsInteger() const override;
  void SetAsInteger(int32_t Value) override;
  int64_t GetAsLargeInt() const override;
  void SetAsLargeInt(int64_t Value) override;
  String GetAsString() const override;
  void SetAsString(const String& Value) override;
  WideString GetAsWideString() const override;
  void SetAsWideString(const WideString& Value) override;
  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void SetVarValue(const Variant& Value) override;
};

class TInterfaceField : public TField {
  ORV_CLASS(TInterfaceField, TField)
 public:
  explicit TInterfaceField(TComponent* AOwner);
  IInterfacePtr GetInterface() const;
  void SetInterface(const IInterfacePtr& Value);

  Variant GetAsVariant() const override;
  int32_t GetDataSize() const override;

 protected:
  void CheckTypeSize(int32_t Value) const override;
  void SetVarValue(const Variant& Value) override;
};

class TIDispatchField : public TInterfaceField {
  ORV_CLASS(TIDispatchField, TInterfaceField)
 public:
  explicit TIDispatchField(TComponent* AOwner);
  IDispatchPtr GetDispatch() const;
  void SetDispatch(const IDispatchPtr& Value);

  Variant GetAsVariant() const override;

 protected:
  void SetVarValue(const Variant& Value) override;
};

// ---------------------------------------------------------------------------------------------
// Object fields: fields with sub-fields

class TObjectField : public TField {
  ORV_CLASS(TObjectField, TField)
 public:
  explicit TObjectField(TComponent* AOwner);
  ~TObjectField() override;

  // The sub-fields; a data-set field shows its nested data set's fields here.
  TFields* GetFields() const { return FFields; }
  int GetFieldCount() const { return FFields->GetCount(); }
  const String& GetObjectType() const { return FObjectType; }
  void SetObjectType(const String& Value) { FObjectType = Value; }
  bool GetUnNamed() const { return FUnNamed; }
  void SetUnNamed(bool Value) { FUnNamed = Value; }
  void SetDataSet(TDataSet* ADataSet) override;

  // Null when every sub-field is Null.
  bool GetIsNull() const override;
  // The values of the sub-fields as a variant array; set from such an array.
  Variant GetAsVariant() const override;

 protected:
  void Bind(bool Binding) override;
  int32_t GetDefaultWidth() const override;
  // "(" and the sub-fields' texts, separated by ", ", then ")".
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;
  void GetChildren(const TGetChildProc& Proc, TComponent* Root) override;

 private:
  friend class TField;
  void SpreadDataSet(TDataSet* ADataSet);

 protected:
  std::unique_ptr<TFields> FOwnedFields;
  TFields* FFields;
  String FObjectType;
  bool FUnNamed = false;
};

class TADTField : public TObjectField {
  ORV_CLASS(TADTField, TObjectField)
 public:
  explicit TADTField(TComponent* AOwner);
};

class TArrayField : public TObjectField {
  ORV_CLASS(TArrayField, TObjectField)
 public:
  explicit TArrayField(TComponent* AOwner);  // Size: number of elements

 protected:
  void CheckTypeSize(int32_t Value) const override;  // any count
};

// Holds a nested data set whose records belong to the current record of this field's data set.
class TDataSetField : public TObjectField {
  ORV_CLASS(TDataSetField, TObjectField)
 public:
  explicit TDataSetField(TComponent* AOwner);
  ~TDataSetField() override;

  // Made by the parent data set (CreateNestedDataSet) when the field is bound, owned by the
  // field; or the one an application assigned.
  TDataSet* GetNestedDataSet() const;
  bool GetIncludeObjectField() const { return FIncludeObjectField; }
  void SetIncludeObjectField(bool Value);

  bool GetCanModify() const override;
  bool GetIsNull() const override;        // no nested data set, or an empty one
  Variant GetAsVariant() const override;  // raises AccessError

 protected:
  // Binding makes the nested data set (when there is none yet) and opens it; unbinding closes
  // it.
  void Bind(bool Binding) override;
  void GetText(String& Text, bool DisplayText) const override;  // the class description
  void Notification(TComponent* AComponent, TOperation Operation) override;

 private:
  friend class TDataSet;
  // Called by the nested data set's SetDataSetField: the field shows its fields from now on.
  void AssignNestedDataSet(TDataSet* Value);
  TDataSet* FNestedDataSet = nullptr;
  bool FIncludeObjectField = false;
};

class TReferenceField : public TDataSetField {
  ORV_CLASS(TReferenceField, TDataSetField)
 public:
  explicit TReferenceField(TComponent* AOwner);
};

// The field class of a data type; null for a type without one.
TClass DefaultFieldClass(TFieldType Type);
// Registers every field class (and the field definition classes) with the class registry, so
// that form files can make persistent fields by class name.
void RegisterFieldClasses();

}  // namespace orv
