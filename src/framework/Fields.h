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
//   ftBlob, ftMemo, ftGraphic, ftWideMemo, ftVariant   a Variant
//   ftInterface / ftIDispatch       an IInterfacePtr / IDispatchPtr
//
// Buffers that hold a Variant or an interface hold a constructed C++ object: the pointer form
// points at one; the byte-array form is sized for one and constructed by the reader/writer pair
// that uses it (see TValueBufferObject), so nothing leaks and nothing is copied bitwise.

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

// The fields of a data set or of an object field, in field order. Owns nothing: fields belong
// to their owner component (the data set's owner for persistent fields, the data set for
// default ones).
class TFields : public TObject {
  ORV_CLASS(TFields, TObject)
 public:
  explicit TFields(TDataSet* ADataSet);
  ~TFields() override;

  void Add(TField* Field);
  void Remove(TField* Field);
  void Clear();  // frees the fields
  // EDatabaseError SDuplicateFieldName / SFieldNameMissing.
  void CheckFieldName(const String& FieldName) const;
  // Raises SFieldNotFound for a name in a ";" list that is not a field.
  void CheckFieldNames(const String& FieldNames) const;
  TField* FindField(const String& FieldName) const;   // compared without case; null if missing
  TField* FieldByName(const String& FieldName) const;  // raises SFieldNotFound with the data set
  TField* FieldByNumber(int32_t FieldNo) const;
  void GetFieldNames(TStrings* List) const;
  int IndexOf(const TField* Field) const;
  int GetCount() const { return static_cast<int>(FList.size()); }
  TField* GetField(int Index) const;  // EDatabaseError SFieldIndexError outside the range
  void SetFieldIndex(TField* Field, int Value);
  TDataSet* GetDataSet() const { return FDataSet; }
  TFieldKinds GetValidFieldKinds() const;

 protected:
  virtual void Changed();

 private:
  TDataSet* FDataSet;
  std::vector<TField*> FList;
};

// A field.
class TField : public TComponent {
  ORV_CLASS(TField, TComponent)
 public:
  explicit TField(TComponent* AOwner);
  ~TField() override;

  void Assign(TPersistent* Source) override;
  // Copies the value of a C++ value through the matching As... setter.
  void AssignValue(const Variant& Value);
  virtual void Clear();  // sets Null
  void FocusControl();
  // The value in the current record buffer: true when not Null; the buffer receives it.
  bool GetData(TValueBuffer& Buffer, bool NativeFormat = true) const;
  bool GetData(void* Buffer, bool NativeFormat = true) const;
  void SetData(const TValueBuffer& Buffer, bool NativeFormat = true);
  void SetData(const void* Buffer, bool NativeFormat = true);
  virtual void SetFieldType(TFieldType Value);
  // Runs OnValidate with the value about to be written; raises to refuse it.
  void Validate(const TValueBuffer& Buffer);
  void Validate(const void* Buffer);
  virtual bool IsValidChar(char InputChar) const;
  static bool IsBlob() { return false; }
  virtual bool GetIsBlob() const { return false; }
  void RefreshLookupList();

  // Values: each class overrides the accessors its data type supports; the others raise
  // AccessError. SetAsVariant clears for Null and passes anything else to SetVarValue.
  virtual TBcd GetAsBCD() const;
  virtual void SetAsBCD(const TBcd& Value);
  virtual bool GetAsBoolean() const;
  virtual void SetAsBoolean(bool Value);
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

  // Text: DisplayText for showing, EditText for editing; OnGetText and OnSetText take
  // precedence over the field's own formatting (GetText / SetText).
  String GetDisplayText() const;
  String GetEditText() const;
  void SetEditText(const String& Value);

  // Identity and layout
  TDataSet* GetDataSet() const { return FDataSet; }
  virtual void SetDataSet(TDataSet* ADataSet);
  const String& GetFieldName() const { return FFieldName; }
  void SetFieldName(const String& Value);
  // The name with the names of the parent object fields before it, joined by ".".
  String GetFullName() const;
  TFieldType GetDataType() const { return FDataType; }
  TFieldKind GetFieldKind() const { return FFieldKind; }
  void SetFieldKind(TFieldKind Value);
  int32_t GetFieldNo() const { return FFieldNo; }
  int32_t GetSize() const { return FSize; }
  void SetSize(int32_t Value);  // checked by CheckTypeSize
  // The bytes of the field's buffer form.
  virtual int32_t GetDataSize() const;
  int32_t GetOffset() const { return FOffset; }
  int GetIndex() const;
  void SetIndex(int Value);
  TObjectField* GetParentField() const { return FParentField; }
  void SetParentField(TObjectField* AField);
  bool GetCalculated() const;
  void SetCalculated(bool Value);
  bool GetLookup() const { return FFieldKind == fkLookup; }
  void SetLookup(bool Value);
  bool GetIsIndexField() const;
  virtual bool GetCanModify() const;

  // Display
  String GetDisplayLabel() const;  // the field name while none is set
  void SetDisplayLabel(const String& Value);
  bool IsDisplayLabelStored() const { return !FDisplayLabel.empty(); }
  String GetDisplayName() const;  // the label, else the field name
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
  // LookupKeyFields equal this data set's KeyFields.
  TDataSet* GetLookupDataSet() const { return FLookupDataSet; }
  void SetLookupDataSet(TDataSet* Value);
  const String& GetKeyFields() const { return FKeyFields; }
  void SetKeyFields(const String& Value);
  const String& GetLookupKeyFields() const { return FLookupKeyFields; }
  void SetLookupKeyFields(const String& Value);
  const String& GetLookupResultField() const { return FLookupResultField; }
  void SetLookupResultField(const String& Value);
  bool GetLookupCache() const { return FLookupCache; }
  void SetLookupCache(bool Value);
  TLookupList* GetLookupList() const { return FLookupList.get(); }

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
  // The data set tells the field that its record buffer changed this field's value.
  void DataChanged();
  // Binding to the open data set: lookup fields find their lookup fields, object fields their
  // children, data-set fields make their nested data set.
  virtual void Bind(bool Binding);
  virtual void FreeBuffers();
  virtual int32_t GetDefaultWidth() const;
  // The field's own text (no events): DisplayText true for showing, false for editing.
  virtual void GetText(String& Text, bool DisplayText) const;
  // Parses an edit text; the base class sets it as the string value.
  virtual void SetText(const String& Value);
  void PropertyChanged(bool LayoutAffected);
  void SetDataType(TFieldType Value);
  void SetFieldNo(int32_t Value) { FFieldNo = Value; }
  void SetOffset(int32_t Value) { FOffset = Value; }
  virtual String GetClassDesc() const;
  // Sets a value that is not Null.
  virtual void SetVarValue(const Variant& Value);

  void Notification(TComponent* AComponent, TOperation Operation) override;
  void SetParentComponent(TComponent* AParent);
  TComponent* GetParentComponent() const override;
  bool HasParent() const override { return true; }

 private:
  friend class TDataSet;
  friend class TFields;
  friend class TFieldDef;
  friend class TObjectField;

  TDataSet* FDataSet = nullptr;
  String FFieldName;
  TFieldType FDataType = ftUnknown;
  TFieldKind FFieldKind = fkData;
  TAlignment FAlignment = taLeftJustify;
  bool FReadOnly = false;
  bool FVisible = true;
  bool FRequired = false;
  bool FValidating = false;
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
  // Points at the value being validated, for the As... getters inside OnValidate.
  const void* FValueBuffer = nullptr;
  TFieldNotifyEvent FOnChange;
  TFieldNotifyEvent FOnValidate;
  TFieldGetTextEvent FOnGetText;
  TFieldSetTextEvent FOnSetText;
};

// The cache of a lookup field: key values to result values.
class TLookupList {
 public:
  void Add(const Variant& AKey, const Variant& AValue);
  void Clear();
  // Unassigned when the key is not cached.
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
  bool GetFixedChar() const { return FFixedChar; }
  void SetFixedChar(bool Value);
  bool GetTransliterate() const { return FTransliterate; }
  void SetTransliterate(bool Value) { FTransliterate = Value; }
  // The value as stored, or false for Null.
  bool GetValue(String& Value) const;
  using TField::GetValue;

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
  int32_t GetDefaultWidth() const override;
  void GetText(String& Text, bool DisplayText) const override;
  // Conversions of the stored text to numbers, dates and Booleans follow the platform's.
  void SetVarValue(const Variant& Value) override;

 private:
  bool FFixedChar = false;
  bool FTransliterate = true;
};

class TWideStringField : public TStringField {
  ORV_CLASS(TWideStringField, TStringField)
 public:
  explicit TWideStringField(TComponent* AOwner);
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

 protected:
  void RangeError(double Value, double Min, double Max) const;

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
  void CheckRange(int32_t Value) const;  // SFieldRangeError outside MinValue..MaxValue
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

  int32_t FMinRange;
  int32_t FMaxRange;

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
  void CheckRange(double Value) const;
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

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
  explicit TSingleField(TComponent* AOwner);  // Precision 7

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
  void GetText(String& Text, bool DisplayText) const override;
  void SetVarValue(const Variant& Value) override;

 private:
  bool FModified = false;
  bool FTransliterate = true;
  int32_t FModifiedRecord = -1;
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

  TFields* GetFields() const { return FFields.get(); }
  int GetFieldCount() const { return FFields->GetCount(); }
  const String& GetObjectType() const { return FObjectType; }
  void SetObjectType(const String& Value) { FObjectType = Value; }
  bool GetUnNamed() const { return FUnNamed; }

  Variant GetAsVariant() const override;

 protected:
  void Bind(bool Binding) override;
  void SetDataSet(TDataSet* ADataSet) override;
  int32_t GetDefaultWidth() const override;
  void GetText(String& Text, bool DisplayText) const override;
  // The values of the sub-fields as an array; set from an array.
  void SetVarValue(const Variant& Value) override;
  void GetChildren(const TGetChildProc& Proc, TComponent* Root) override;

  std::unique_ptr<TFields> FFields;
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
  Variant GetAsVariant() const override;  // raises AccessError

 protected:
  void Bind(bool Binding) override;
  void Notification(TComponent* AComponent, TOperation Operation) override;

 private:
  friend class TDataSet;
  void AssignNestedDataSet(TDataSet* Value);
  TDataSet* FOwnedDataSet = nullptr;   // a component owned by this field
  TDataSet* FNestedDataSet = nullptr;  // the one in use
  bool FIncludeObjectField = false;
};

class TReferenceField : public TDataSetField {
  ORV_CLASS(TReferenceField, TDataSetField)
 public:
  explicit TReferenceField(TComponent* AOwner);
};

// The field class of a data type; null for a type without one.
TClass DefaultFieldClass(TFieldType Type);

}  // namespace orv
