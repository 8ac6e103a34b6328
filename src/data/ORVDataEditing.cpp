// TORVCustomData: editing. While a record is edited or inserted its values live only in the
// record buffer; the post hands them to the application (the insertion first, then one value
// per modified field), a delete is handed over at once. The record count and the index list
// follow each of them.

#include <algorithm>

#include "ORVData.h"
#include "ORVIndexList.h"

namespace orv {

bool TORVCustomData::GetCanModify() const { return !FReadOnly; }

void TORVCustomData::InternalEdit() { FModifiedFields.clear(); }

// A nested record belongs to its parent's record, which must exist first.
void TORVCustomData::DoBeforeInsert() {
  TDataSet::DoBeforeInsert();
  if (GetDataSetField() && FParentDataSet && FParentDataSet->GetState() == dsInsert)
    FParentDataSet->Post();
}

void TORVCustomData::DoOnNewRecord() {
  FModifiedFields.clear();
  TDataSet::DoOnNewRecord();
}

void TORVCustomData::InternalAddRecord(TRecordBuffer Buffer, bool Append) {
  if (Append) SetBookmarkFlag(Buffer, bfEOF);
  InternalPost();
}

void TORVCustomData::InternalAddRecord(void* Buffer, bool Append) {
  InternalAddRecord(static_cast<TRecordBuffer>(Buffer), Append);
}

// Record indexes: an edited record's own; an inserted record the position of the record that
// was current when the insert began (0 in an empty data set), an appended one the record count,
// and with an index list always the record count (GetIndex).
void TORVCustomData::InternalPost() {
  TDataSet::InternalPost();
  UpdateCursorPos();
  try {
    const int32_t index = GetRecordIndex();
    const bool inserting = GetState() == dsInsert;
    if (inserting) DoOnInsertRecord(index);
    // A sorted data set without index fields is ordered by comparison alone: any change may
    // move the record.
    bool resort = GetSorted() && FIndexFields.empty();
    try {
      TRecordBuffer record = ActiveBuffer();
      for (TField* field : FModifiedFields) {
        if (GetSorted() && std::find(FIndexFields.begin(), FIndexFields.end(), field) !=
                               FIndexFields.end())
          resort = true;
        const Variant* slot = FieldSlot(record, field);
        if (!slot || VarIsEmpty(*slot)) continue;
        const Variant value = *slot;
        DoOnSetFieldData(index, field, value);
      }
    } catch (...) {
      if (inserting) DoOnDeleteRecord(index);
      throw;
    }
    if (inserting) ++FRecordCount;
    if (FIndexList) {
      if (inserting)
        FIndexList->Insert(index);
      else if (resort)
        FIndexList->Modify(index);
    }
    if (FFieldChange) FDataChanged = true;
    FFieldChange = false;
  } catch (...) {
    CursorPosChanged();
    throw;
  }
}

void TORVCustomData::InternalDelete() {
  const int32_t index = GetRecordIndex();
  DoOnDeleteRecord(index);
  --FRecordCount;
  if (FIndexList) FIndexList->Delete(index);
  FDataChanged = true;
  FFieldChange = false;
}

}  // namespace orv
