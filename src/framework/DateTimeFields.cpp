// Dates and times: TDateTimeField, TDateField, TTimeField (plain form a TDateTime) and the SQL
// time-stamp fields.

#include "DB.h"

namespace orv {

ORV_PUBLISH(TDateTimeField) {
  p.Property("DisplayFormat", &TDateTimeField::GetDisplayFormat, &TDateTimeField::SetDisplayFormat);
  p.Property("EditMask", &TDateTimeField::GetEditMask, &TDateTimeField::SetEditMask);
}
ORV_IMPLEMENT_CLASS(TDateField)
ORV_IMPLEMENT_CLASS(TTimeField)
ORV_PUBLISH(TSQLTimeStampField) {
  p.Property("DisplayFormat", &TSQLTimeStampField::GetDisplayFormat,
             &TSQLTimeStampField::SetDisplayFormat);
  p.Property("EditMask", &TSQLTimeStampField::GetEditMask, &TSQLTimeStampField::SetEditMask);
}
ORV_IMPLEMENT_CLASS(TSQLTimeStampOffsetField)

// ---------------------------------------------------------------------------------------------
// TDateTimeField and its date and time kinds

TDateTimeField::TDateTimeField(TComponent* AOwner) : TField(AOwner) { SetDataType(ftDateTime); }
TDateField::TDateField(TComponent* AOwner) : TDateTimeField(AOwner) { SetDataType(ftDate); }
TTimeField::TTimeField(TComponent* AOwner) : TDateTimeField(AOwner) { SetDataType(ftTime); }

int32_t TDateTimeField::GetDataSize() const { return sizeof(double); }
int32_t TDateField::GetDataSize() const { return sizeof(int32_t); }
int32_t TTimeField::GetDataSize() const { return sizeof(int32_t); }

int32_t TDateTimeField::GetDefaultWidth() const {
  // As wide as the text of a date and time with two-digit parts everywhere.
  const TDateTime sample = EncodeDate(2000, 12, 31) + EncodeTime(23, 59, 59, 0);
  String text;
  GetTextOf(sample, text, false);
  return static_cast<int32_t>(text.size());
}

void TDateTimeField::SetDisplayFormat(const String& Value) {
  if (Value == FDisplayFormat) return;
  FDisplayFormat = Value;
  PropertyChanged(false);
}

bool TDateTimeField::GetValue(TDateTime& Value) const { return GetData(&Value.Val, false); }

TDateTime TDateTimeField::GetAsDateTime() const {
  TDateTime value;
  return GetValue(value) ? value : TDateTime();
}

void TDateTimeField::SetAsDateTime(TDateTime Value) { SetPlainData(Value.Val, false); }

double TDateTimeField::GetAsFloat() const { return GetAsDateTime(); }
void TDateTimeField::SetAsFloat(double Value) { SetAsDateTime(Value); }

String TDateTimeField::GetAsString() const {
  String text;
  GetText(text, false);
  return text;
}

void TDateTimeField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  switch (GetDataType()) {
    case ftDate: return SetAsDateTime(StrToDate(Value));
    case ftTime: return SetAsDateTime(StrToTime(Value));
    default: return SetAsDateTime(StrToDateTime(Value));
  }
}

Variant TDateTimeField::GetAsVariant() const {
  TDateTime value;
  return GetValue(value) ? Variant(value) : Null();
}

void TDateTimeField::SetVarValue(const Variant& Value) { SetAsDateTime(Value.AsDateTime()); }

void TDateTimeField::GetTextOf(TDateTime Value, String& Text, bool DisplayText) const {
  String format;
  if (DisplayText && !FDisplayFormat.empty())
    format = FDisplayFormat;
  else if (GetDataType() == ftDate)
    format = FormatSettings.ShortDateFormat;
  else if (GetDataType() == ftTime)
    format = FormatSettings.LongTimeFormat;
  // No format: the date, a blank and the time, the time left out at exactly midnight.
  Text = FormatDateTime(format, Value);
}

void TDateTimeField::GetText(String& Text, bool DisplayText) const {
  TDateTime value;
  if (!GetValue(value)) return Text.clear();
  GetTextOf(value, Text, DisplayText);
}

// ---------------------------------------------------------------------------------------------
// TSQLTimeStampField

TSQLTimeStampField::TSQLTimeStampField(TComponent* AOwner) : TField(AOwner) {
  SetDataType(ftTimeStamp);
}

int32_t TSQLTimeStampField::GetDataSize() const { return sizeof(TSQLTimeStamp); }

void TSQLTimeStampField::SetDisplayFormat(const String& Value) {
  if (Value == FDisplayFormat) return;
  FDisplayFormat = Value;
  PropertyChanged(false);
}

TSQLTimeStamp TSQLTimeStampField::GetAsSQLTimeStamp() const {
  TSQLTimeStamp value;
  return GetData(&value) ? value : NullSQLTimeStamp;
}

void TSQLTimeStampField::SetAsSQLTimeStamp(const TSQLTimeStamp& Value) { SetPlainData(Value); }

TDateTime TSQLTimeStampField::GetAsDateTime() const {
  return SQLTimeStampToDateTime(GetAsSQLTimeStamp());
}

void TSQLTimeStampField::SetAsDateTime(TDateTime Value) {
  SetAsSQLTimeStamp(DateTimeToSQLTimeStamp(Value));
}

double TSQLTimeStampField::GetAsFloat() const { return GetAsDateTime(); }
void TSQLTimeStampField::SetAsFloat(double Value) { SetAsDateTime(Value); }

String TSQLTimeStampField::GetAsString() const {
  String text;
  GetText(text, false);
  return text;
}

void TSQLTimeStampField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  SetAsSQLTimeStamp(StrToSQLTimeStamp(Value));
}

Variant TSQLTimeStampField::GetAsVariant() const {
  TSQLTimeStamp value;
  return GetData(&value) ? VarSQLTimeStampCreate(value) : Null();
}

void TSQLTimeStampField::SetVarValue(const Variant& Value) {
  SetAsSQLTimeStamp(VarToSQLTimeStamp(Value));
}

void TSQLTimeStampField::GetText(String& Text, bool DisplayText) const {
  TSQLTimeStamp value;
  if (!GetData(&value)) return Text.clear();
  Text = SQLTimeStampToStr(DisplayText ? FDisplayFormat : String(), value);
}

// ---------------------------------------------------------------------------------------------
// TSQLTimeStampOffsetField

TSQLTimeStampOffsetField::TSQLTimeStampOffsetField(TComponent* AOwner)
    : TSQLTimeStampField(AOwner) {
  SetDataType(ftTimeStampOffset);
}

int32_t TSQLTimeStampOffsetField::GetDataSize() const { return sizeof(TSQLTimeStampOffset); }

TSQLTimeStampOffset TSQLTimeStampOffsetField::GetAsSQLTimeStampOffset() const {
  TSQLTimeStampOffset value;
  return GetData(&value) ? value : NullSQLTimeStampOffset;
}

void TSQLTimeStampOffsetField::SetAsSQLTimeStampOffset(const TSQLTimeStampOffset& Value) {
  SetPlainData(Value);
}

TSQLTimeStamp TSQLTimeStampOffsetField::GetAsSQLTimeStamp() const {
  return SQLTimeStampOffsetToSQLTimeStamp(GetAsSQLTimeStampOffset());
}

void TSQLTimeStampOffsetField::SetAsSQLTimeStamp(const TSQLTimeStamp& Value) {
  SetAsSQLTimeStampOffset(SQLTimeStampToSQLTimeStampOffset(Value));
}

TDateTime TSQLTimeStampOffsetField::GetAsDateTime() const {
  return SQLTimeStampOffsetToDateTime(GetAsSQLTimeStampOffset());
}

void TSQLTimeStampOffsetField::SetAsDateTime(TDateTime Value) {
  SetAsSQLTimeStampOffset(DateTimeToSQLTimeStampOffset(Value));
}

String TSQLTimeStampOffsetField::GetAsString() const {
  String text;
  GetText(text, false);
  return text;
}

void TSQLTimeStampOffsetField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  SetAsSQLTimeStampOffset(StrToSQLTimeStampOffset(Value));
}

Variant TSQLTimeStampOffsetField::GetAsVariant() const {
  TSQLTimeStampOffset value;
  return GetData(&value) ? VarSQLTimeStampOffsetCreate(value) : Null();
}

void TSQLTimeStampOffsetField::SetVarValue(const Variant& Value) {
  SetAsSQLTimeStampOffset(VarToSQLTimeStampOffset(Value));
}

void TSQLTimeStampOffsetField::GetText(String& Text, bool DisplayText) const {
  TSQLTimeStampOffset value;
  if (!GetData(&value)) return Text.clear();
  Text = SQLTimeStampOffsetToStr(DisplayText ? GetDisplayFormat() : String(), value);
}

}  // namespace orv
