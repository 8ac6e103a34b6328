// Fields whose buffer holds an object: TVariantField (a Variant), TInterfaceField and
// TIDispatchField (an interface reference). Reads assign to a local object; writes construct
// the value in a TValueBufferObject.

#include "DB.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TVariantField)
ORV_IMPLEMENT_CLASS(TInterfaceField)
ORV_IMPLEMENT_CLASS(TIDispatchField)

// ---------------------------------------------------------------------------------------------
// TVariantField

TVariantField::TVariantField(TComponent* AOwner) : TField(AOwner) { SetDataType(ftVariant); }

int32_t TVariantField::GetDataSize() const { return sizeof(Variant); }

void TVariantField::CheckTypeSize(int32_t Value) const {
  if (Value != 0) DatabaseError(SInvalidFieldSize);
}

Variant TVariantField::GetAsVariant() const {
  Variant value;
  if (!GetData(&value)) return Null();
  return value;
}

void TVariantField::SetVarValue(const Variant& Value) {
  TValueBufferObject<Variant> buffer(Value);
  SetData(buffer.Buffer());
}

// The other kinds are the Variant's own coercions.
bool TVariantField::GetAsBoolean() const { return GetAsVariant().AsBoolean(); }
void TVariantField::SetAsBoolean(bool Value) { SetVarValue(Value); }
TDateTime TVariantField::GetAsDateTime() const { return GetAsVariant().AsDateTime(); }
void TVariantField::SetAsDateTime(TDateTime Value) { SetVarValue(Value); }
double TVariantField::GetAsFloat() const { return GetAsVariant().AsDouble(); }
void TVariantField::SetAsFloat(double Value) { SetVarValue(Value); }
int32_t TVariantField::GetAsInteger() const { return GetAsVariant().AsInteger(); }
void TVariantField::SetAsInteger(int32_t Value) { SetVarValue(Value); }
int64_t TVariantField::GetAsLargeInt() const { return GetAsVariant().AsInt64(); }
void TVariantField::SetAsLargeInt(int64_t Value) { SetVarValue(Value); }
String TVariantField::GetAsString() const { return VarToStr(GetAsVariant()); }
void TVariantField::SetAsString(const String& Value) { SetVarValue(Value); }
WideString TVariantField::GetAsWideString() const { return VarToWideStr(GetAsVariant()); }
void TVariantField::SetAsWideString(const WideString& Value) { SetVarValue(Value); }

// ---------------------------------------------------------------------------------------------
// TInterfaceField and TIDispatchField

TInterfaceField::TInterfaceField(TComponent* AOwner) : TField(AOwner) { SetDataType(ftInterface); }

TIDispatchField::TIDispatchField(TComponent* AOwner) : TInterfaceField(AOwner) {
  SetDataType(ftIDispatch);
}

int32_t TInterfaceField::GetDataSize() const {
  return GetDataType() == ftIDispatch ? sizeof(IDispatchPtr) : sizeof(IInterfacePtr);
}

void TInterfaceField::CheckTypeSize(int32_t Value) const {
  if (Value != 0) DatabaseError(SInvalidFieldSize);
}

IInterfacePtr TInterfaceField::GetInterface() const {
  if (GetDataType() == ftIDispatch) {
    IDispatchPtr dispatch;
    return GetData(&dispatch) ? IInterfacePtr(dispatch) : IInterfacePtr();
  }
  IInterfacePtr value;
  return GetData(&value) ? value : IInterfacePtr();
}

void TInterfaceField::SetInterface(const IInterfacePtr& Value) {
  if (GetDataType() != ftIDispatch) {
    TValueBufferObject<IInterfacePtr> buffer(Value);
    return SetData(buffer.Buffer());
  }
  IDispatchPtr dispatch = Supports<IDispatch>(Value);
  if (Value && !dispatch) throw EInvalidCast("Interface not supported");
  TValueBufferObject<IDispatchPtr> buffer(dispatch);
  SetData(buffer.Buffer());
}

Variant TInterfaceField::GetAsVariant() const {
  IInterfacePtr value;
  if (!GetData(&value)) return Null();
  return Variant(value);
}

void TInterfaceField::SetVarValue(const Variant& Value) { SetInterface(Value.AsInterface()); }

IDispatchPtr TIDispatchField::GetDispatch() const {
  IDispatchPtr value;
  return GetData(&value) ? value : IDispatchPtr();
}

void TIDispatchField::SetDispatch(const IDispatchPtr& Value) {
  TValueBufferObject<IDispatchPtr> buffer(Value);
  SetData(buffer.Buffer());
}

Variant TIDispatchField::GetAsVariant() const {
  IDispatchPtr value;
  if (!GetData(&value)) return Null();
  return Variant(value);
}

void TIDispatchField::SetVarValue(const Variant& Value) { SetDispatch(Value.AsDispatch()); }

}  // namespace orv
