// TDataSet: editing. Edit, Insert and Append put the active buffer into an editing state, Post
// hands it to the descendant, Cancel drops it, Delete removes the active record; each with its
// before/after events, and Edit, Post and Delete with their error events.

#include "DataSet.h"

#include "DBConsts.h"
#include "TryFinally.h"

namespace orv {

// Runs the operation until it succeeds; an EDatabaseError goes to the error event, whose action
// decides: daFail raises it, daAbort ends silently (EAbort), daRetry runs the operation again.
void TDataSet::CheckOperation(const std::function<void()>& Operation,
                              const TDataSetErrorEvent& ErrorEvent) {
  for (;;) {
    TDataAction action = daFail;
    try {
      UpdateCursorPos();
      Operation();
      return;
    } catch (EDatabaseError& e) {
      if (ErrorEvent) ErrorEvent(this, e, action);
      if (action == daFail) throw;
    }
    if (action == daAbort) Abort();
  }
}

void TDataSet::Edit() {
  if (FState == dsEdit || FState == dsInsert) return;
  if (FRecordCount == 0) {
    Insert();
    return;
  }
  CheckBrowseMode();
  CheckCanModify();
  DoBeforeEdit();
  CheckParentState();
  CheckOperation([this] { InternalEdit(); }, FOnEditError);
  GetCalcFields(ActiveBuffer());
  SetState(dsEdit);
  DataEvent(deRecordChange, 0);
  DoAfterEdit();
}

// A nested record is part of its parent's record: changing it edits the parent.
void TDataSet::CheckParentState() {
  if (FDataSetField) FDataSetField->GetDataSet()->Edit();
}

void TDataSet::BeginInsertAppend() {
  CheckBrowseMode();
  CheckCanModify();
  DoBeforeInsert();
  CheckParentState();
  DoBeforeScroll();
}

// The new buffer takes the active place; it carries the bookmark of the record that was
// current (bfInserted), or bfBOF in an empty data set, so the descendant knows where it goes.
void TDataSet::Insert() {
  BeginInsertAppend();
  TBookmark oldCurrent = GetBookmark();
  MoveBuffer(FRecordCount, FActiveRecord);
  TRecordBuffer buffer = ActiveBuffer();
  InitRecord(buffer);
  if (FRecordCount == 0)
    SetBookmarkFlag(buffer, bfBOF);
  else
    SetBookmarkData(buffer, oldCurrent);
  if (FRecordCount < FBufferCount) ++FRecordCount;
  InternalInsert();
  EndInsertAppend();
}

// The new buffer goes after the last record (bfEOF), with the records before it fetched above.
void TDataSet::Append() {
  BeginInsertAppend();
  ClearBuffers();
  TRecordBuffer buffer = FBuffers[0];
  InitRecord(buffer);
  SetBookmarkFlag(buffer, bfEOF);
  FRecordCount = 1;
  FBOF = false;
  GetPriorRecords();
  InternalInsert();
  EndInsertAppend();
}

void TDataSet::EndInsertAppend() {
  SetState(dsInsert);
  try {
    DoOnNewRecord();
  } catch (...) {
    UpdateCursorPos();
    FreeFieldBuffers();
    SetState(dsBrowse);
    Resync(TResyncMode{});
    throw;
  }
  FModified = false;
  DataEvent(deDataSetChange, 0);
  DoAfterInsert();
  DoAfterScroll();
}

void TDataSet::InitRecord(TRecordBuffer Buffer) {
  InternalInitRecord(Buffer);
  ClearCalcFields(Buffer);
  SetBookmarkFlag(Buffer, bfInserted);
}

void TDataSet::UpdateRecord() {
  if (FState != dsEdit && FState != dsInsert && FState != dsSetKey)
    DatabaseError(SNotEditing, this);
  DataEvent(deUpdateRecord, 0);
}

void TDataSet::Post() {
  UpdateRecord();
  if (FState != dsEdit && FState != dsInsert) return;
  DataEvent(deCheckBrowseMode, 0);
  DoBeforePost();
  CheckOperation([this] { InternalPost(); }, FOnPostError);
  FreeFieldBuffers();
  SetState(dsBrowse);
  Resync(TResyncMode{});
  DoAfterPost();
}

void TDataSet::InternalPost() { CheckRequiredFields(); }

// A required data field that is Null refuses the post; the field's control gets the focus.
void TDataSet::CheckRequiredFields() {
  for (int i = 0; i < FFields->GetCount(); ++i) {
    TField* field = FFields->GetField(i);
    if (field->GetRequired() && !field->GetReadOnly() && field->GetFieldKind() == fkData &&
        field->GetIsNull()) {
      field->FocusControl();
      DatabaseErrorFmt(SFieldRequired, {field->GetDisplayName()});
    }
  }
}

void TDataSet::Cancel() {
  if (FState != dsEdit && FState != dsInsert) return;
  DataEvent(deCheckBrowseMode, 0);
  DoBeforeCancel();
  const bool scrolls = FState == dsInsert;
  if (scrolls) DoBeforeScroll();
  UpdateCursorPos();
  InternalCancel();
  FreeFieldBuffers();
  SetState(dsBrowse);
  Resync(TResyncMode{});
  DoAfterCancel();
  if (scrolls) DoAfterScroll();
}

void TDataSet::Delete() {
  CheckActive();
  if (FState == dsInsert || FState == dsSetKey) {
    Cancel();
    return;
  }
  if (FRecordCount == 0) DatabaseError(SDataSetEmpty, this);
  DataEvent(deCheckBrowseMode, 0);
  DoBeforeDelete();
  DoBeforeScroll();
  CheckOperation([this] { InternalDelete(); }, FOnDeleteError);
  FreeFieldBuffers();
  SetState(dsBrowse);
  Resync(TResyncMode{});
  DoAfterDelete();
  DoAfterScroll();
}

void TDataSet::CheckBrowseMode() {
  CheckActive();
  DataEvent(deCheckBrowseMode, 0);
  switch (FState) {
    case dsEdit:
    case dsInsert:
      UpdateRecord();
      if (FModified)
        Post();
      else
        Cancel();
      break;
    case dsSetKey:
      Post();
      break;
    default:
      break;
  }
}

void TDataSet::Refresh() {
  DoBeforeRefresh();
  CheckBrowseMode();
  UpdateCursorPos();
  TryFinally([this] { InternalRefresh(); },
             [this] {
               Resync(TResyncMode{});
               DoAfterRefresh();
             });
}

void TDataSet::FreeFieldBuffers() {
  for (int i = 0; i < FFields->GetCount(); ++i) FFields->GetField(i)->FreeBuffers();
}

// ---------------------------------------------------------------------------------------------
// Records as value lists

void TDataSet::SetFields(const std::vector<Variant>& Values) {
  DisableControls();
  TryFinally(
      [&] {
        for (size_t i = 0; i < Values.size(); ++i)
          if (!VarIsEmpty(Values[i])) FFields->GetField(static_cast<int>(i))->AssignValue(Values[i]);
      },
      [this] { EnableControls(); });
}

void TDataSet::AppendRecord(const std::vector<Variant>& Values) {
  Append();
  SetFields(Values);
  Post();
}

void TDataSet::InsertRecord(const std::vector<Variant>& Values) {
  Insert();
  SetFields(Values);
  Post();
}

void TDataSet::ClearFields() {
  if (FState != dsEdit && FState != dsInsert && FState != dsSetKey)
    DatabaseError(SNotEditing, this);
  DataEvent(deCheckBrowseMode, 0);
  FreeFieldBuffers();
  InternalInitRecord(ActiveBuffer());
  if (FState != dsSetKey) GetCalcFields(ActiveBuffer());
  DataEvent(deRecordChange, 0);
}

}  // namespace orv
