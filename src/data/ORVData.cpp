// TORVData: publishes the engine's properties and events, with their defaults, for the
// designer and form files.

#include "ORVData.h"

namespace orv {

ORV_PUBLISH(TORVData) {
  using D = TORVData;
  p.Property("Active", &D::GetActive, &D::SetActive).Default(false);
  p.Property("AutoCalcFields", &D::GetAutoCalcFields, &D::SetAutoCalcFields).Default(true);
  p.Property("DataSetField", &D::GetDataSetField, &D::SetDataSetField);
  p.Property("DefaultWidth", &D::GetDefaultWidth, &D::SetDefaultWidth).Default(30);
  p.Property("FieldDefs", &D::GetFieldDefs, &D::SetFieldDefs).Stored(&D::GetStoreDefs);
  p.Property("Filtered", &D::GetFiltered, &D::SetFiltered).Default(false);
  p.Property("IndexFieldNames", &D::GetIndexFieldNames, &D::SetIndexFieldNames);
  p.Property("InternalCalcFieldNames", &D::GetInternalCalcFieldNames,
             &D::SetInternalCalcFieldNames)
      .Stored(&D::IsInternalCalcFieldNamesStored);
  p.Property("ObjectView", &D::GetObjectView, &D::SetObjectView).Default(true);
  p.Property("ReadOnly", &D::GetReadOnly, &D::SetReadOnly).Default(false);
  p.Property("Reversed", &D::GetReversed, &D::SetReversed).Default(false);
  p.Property("Sorted", &D::GetSorted, &D::SetSorted).Default(false);
  p.Property("StoreDefs", &D::GetStoreDefs, &D::SetStoreDefs).Default(false);

  p.Property("AfterCancel", &D::GetAfterCancel, &D::SetAfterCancel);
  p.Property("AfterClose", &D::GetAfterClose, &D::SetAfterClose);
  p.Property("AfterDelete", &D::GetAfterDelete, &D::SetAfterDelete);
  p.Property("AfterEdit", &D::GetAfterEdit, &D::SetAfterEdit);
  p.Property("AfterInsert", &D::GetAfterInsert, &D::SetAfterInsert);
  p.Property("AfterOpen", &D::GetAfterOpen, &D::SetAfterOpen);
  p.Property("AfterPost", &D::GetAfterPost, &D::SetAfterPost);
  p.Property("AfterRefresh", &D::GetAfterRefresh, &D::SetAfterRefresh);
  p.Property("AfterScroll", &D::GetAfterScroll, &D::SetAfterScroll);
  p.Property("BeforeCancel", &D::GetBeforeCancel, &D::SetBeforeCancel);
  p.Property("BeforeClose", &D::GetBeforeClose, &D::SetBeforeClose);
  p.Property("BeforeDelete", &D::GetBeforeDelete, &D::SetBeforeDelete);
  p.Property("BeforeEdit", &D::GetBeforeEdit, &D::SetBeforeEdit);
  p.Property("BeforeInsert", &D::GetBeforeInsert, &D::SetBeforeInsert);
  p.Property("BeforeOpen", &D::GetBeforeOpen, &D::SetBeforeOpen);
  p.Property("BeforePost", &D::GetBeforePost, &D::SetBeforePost);
  p.Property("BeforeRefresh", &D::GetBeforeRefresh, &D::SetBeforeRefresh);
  p.Property("BeforeScroll", &D::GetBeforeScroll, &D::SetBeforeScroll);
  p.Property("OnCalcFields", &D::GetOnCalcFields, &D::SetOnCalcFields);
  p.Property("OnDeleteError", &D::GetOnDeleteError, &D::SetOnDeleteError);
  p.Property("OnEditError", &D::GetOnEditError, &D::SetOnEditError);
  p.Property("OnFilterRecord", &D::GetOnFilterRecord, &D::SetOnFilterRecord);
  p.Property("OnNewRecord", &D::GetOnNewRecord, &D::SetOnNewRecord);
  p.Property("OnPostError", &D::GetOnPostError, &D::SetOnPostError);

  p.Property("OnCompareRecords", &D::GetOnCompareRecords, &D::SetOnCompareRecords);
  p.Property("OnCountRecords", &D::GetOnCountRecords, &D::SetOnCountRecords);
  p.Property("OnDeleteRecord", &D::GetOnDeleteRecord, &D::SetOnDeleteRecord);
  p.Property("OnGetFieldData", &D::GetOnGetFieldData, &D::SetOnGetFieldData);
  p.Property("OnInsertRecord", &D::GetOnInsertRecord, &D::SetOnInsertRecord);
  p.Property("OnSetFieldData", &D::GetOnSetFieldData, &D::SetOnSetFieldData);
}

}  // namespace orv
