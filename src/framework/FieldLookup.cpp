// Lookup fields: their settings, the check of those settings when the field is bound, the value
// of the current record, and the cache of key and result values.

#include "DB.h"
#include "TryFinally.h"

namespace orv {

namespace {

// Keys of different kinds that cannot be compared (a text against a number) do not match.
bool SameKey(const Variant& a, const Variant& b) {
  try {
    return VarCompareValue(a, b) == vrEqual;
  } catch (const EVariantError&) {
    return false;
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// TLookupList

void TLookupList::Add(const Variant& AKey, const Variant& AValue) {
  FList.emplace_back(AKey, AValue);
}

void TLookupList::Clear() { FList.clear(); }

Variant TLookupList::ValueOfKey(const Variant& AKey) const {
  if (VarIsNull(AKey)) return Null();
  for (const auto& [key, value] : FList)
    if (SameKey(key, AKey)) return value;
  return Null();
}

// ---------------------------------------------------------------------------------------------
// Settings

void TField::SetLookupDataSet(TDataSet* Value) {
  if (Value == FLookupDataSet) return;
  CheckInactive();
  if (Value && Value == FDataSet) DatabaseError(SCircularDataLink, this);
  if (FLookupDataSet) FLookupDataSet->RemoveFreeNotification(this);
  FLookupDataSet = Value;
  if (Value) Value->FreeNotification(this);
  if (FLookupList) FLookupList->Clear();
}

void TField::SetKeyFields(const String& Value) {
  CheckInactive();
  FKeyFields = Value;
}

void TField::SetLookupKeyFields(const String& Value) {
  CheckInactive();
  FLookupKeyFields = Value;
}

void TField::SetLookupResultField(const String& Value) {
  CheckInactive();
  FLookupResultField = Value;
}

void TField::SetLookupCache(bool Value) {
  if (Value == FLookupCache) return;
  CheckInactive();
  FLookupCache = Value;
  if (Value && !FLookupList) FLookupList = std::make_unique<TLookupList>();
  if (!Value && FLookupList) FLookupList->Clear();
}

void TField::ValidateLookupInfo(bool All) const {
  if ((All && (!FLookupDataSet || FLookupKeyFields.empty() || FLookupResultField.empty())) ||
      FKeyFields.empty())
    DatabaseErrorFmt(SLookupInfoError, {GetDisplayName()});
  if (FFields) FFields->CheckFieldNames(FKeyFields);
  if (!All) return;
  FLookupDataSet->Open();
  FLookupDataSet->GetFields()->CheckFieldNames(FLookupKeyFields);
  FLookupDataSet->FieldByName(FLookupResultField);
}

// ---------------------------------------------------------------------------------------------
// The cache

void TField::RefreshLookupList() {
  if (!FLookupDataSet) return ValidateLookupInfo(false);
  TDataSet* lookup = FLookupDataSet;
  const bool wasActive = lookup->GetActive();
  TryFinally(
      [&] {
        ValidateLookupInfo(true);
        lookup->DisableControls();
        TryFinally([&] { FillLookupList(); }, [lookup] { lookup->EnableControls(); });
      },
      [lookup, wasActive] {
        if (!wasActive) lookup->Close();
      });
}

void TField::FillLookupList() {
  if (!FLookupList) FLookupList = std::make_unique<TLookupList>();
  FLookupList->Clear();
  for (FLookupDataSet->First(); !FLookupDataSet->GetEOF(); FLookupDataSet->Next())
    FLookupList->Add(FLookupDataSet->GetFieldValues(FLookupKeyFields),
                     FLookupDataSet->GetFieldValues(FLookupResultField));
}

}  // namespace orv
