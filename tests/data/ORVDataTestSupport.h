#pragma once
// What the engine's tests share: a TORVData over an application's vector of people that writes
// down every call the engine makes into the application, and a grid-like link that paints its
// rows.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ORVData.h"

namespace orv::testing {

using Calls = std::vector<std::string>;

struct TPerson {
  int32_t ID = 0;
  String Name;
  double Score = 0;
};

// ID 1..count, Name "Name<ID>", Score ID * 1.5; the data set is named "People". Calls reads
// "count", "get <index> <field>", "set <index> <field>=<value as text>", "insert <index>",
// "delete <index>".
class TPeopleData {
 public:
  explicit TPeopleData(int count) {
    FData.SetName("People");
    FData.GetFieldDefs()->Add("ID", ftInteger);
    FData.GetFieldDefs()->Add("Name", ftString, 20);
    FData.GetFieldDefs()->Add("Score", ftFloat);
    for (int id = 1; id <= count; ++id) Rows.push_back({id, "Name" + std::to_string(id), id * 1.5});
    FData.SetOnCountRecords([this](TDataSet*, int32_t& Count) {
      Log.push_back("count");
      Count = static_cast<int32_t>(Rows.size());
    });
    FData.SetOnGetFieldData([this](TDataSet*, int32_t Index, TField* Field, Variant& Value) {
      Log.push_back("get " + std::to_string(Index) + " " + Field->GetFieldName());
      const TPerson& person = Rows.at(static_cast<size_t>(Index));
      if (Field->GetFieldName() == "ID") Value = person.ID;
      if (Field->GetFieldName() == "Name") Value = person.Name;
      if (Field->GetFieldName() == "Score") Value = person.Score;
    });
    FData.SetOnSetFieldData([this](TDataSet*, int32_t Index, TField* Field, const Variant& Value) {
      Log.push_back("set " + std::to_string(Index) + " " + Field->GetFieldName() + "=" +
                    VarToStrDef(Value, "(null)"));
      if (Value.VType() == varString && Value.AsString() == "fail") throw EConvertError("refused");
      TPerson& person = Rows.at(static_cast<size_t>(Index));
      if (Field->GetFieldName() == "ID") person.ID = VarIsNull(Value) ? 0 : Value.AsInteger();
      if (Field->GetFieldName() == "Name") person.Name = VarToStr(Value);
      if (Field->GetFieldName() == "Score") person.Score = VarIsNull(Value) ? 0 : Value.AsDouble();
    });
    FData.SetOnInsertRecord([this](TDataSet*, int32_t Index) {
      Log.push_back("insert " + std::to_string(Index));
      Rows.insert(Rows.begin() + Index, TPerson{});
    });
    FData.SetOnDeleteRecord([this](TDataSet*, int32_t Index) {
      Log.push_back("delete " + std::to_string(Index));
      Rows.erase(Rows.begin() + Index);
    });
  }

  TORVData* operator->() { return &FData; }
  TORVData* DataSet() { return &FData; }
  Calls Take() { return std::exchange(Log, {}); }
  TField* Field(const char* name) { return FData.FieldByName(name); }
  int32_t CurrentID() { return Field("ID")->GetAsInteger(); }

  std::vector<TPerson> Rows;
  Calls Log;

 private:
  TORVData FData;  // after the rows: it closes before they go
};

// Paints its rows as a grid does: each row made active in turn and its fields' text read.
class TGridLink : public TDataLink {
 public:
  TGridLink(TDataSource* source, int rows) {
    SetBufferCount(rows);
    SetDataSource(source);
  }
  ~TGridLink() override { SetDataSource(nullptr); }

  // The display text of every visible cell, row by row, "|" between the cells of a row.
  std::vector<std::string> Paint() {
    std::vector<std::string> rows;
    const int active = GetActiveRecord();
    for (int row = 0; row < GetRecordCount(); ++row) {
      SetActiveRecord(row);
      std::string line;
      TFields* fields = GetDataSet()->GetFields();
      for (int i = 0; i < fields->GetCount(); ++i)
        line += (i ? "|" : "") + fields->GetField(i)->GetDisplayText();
      rows.push_back(line);
    }
    SetActiveRecord(active);
    return rows;
  }
};

}  // namespace orv::testing
