#pragma once
// What the data-set tests share: a table of numbered people, a link that writes down what it
// hears as a grid would, and an event log for a data set's before/after events.

#include <memory>
#include <string>
#include <vector>

#include "TestDataSet.h"

namespace orv::test {

// ID 1..count, Name "Name<ID>", Age 20 + ID % 50.
inline std::unique_ptr<TTestDataSet> MakePeople(int count, TComponent* owner = nullptr) {
  auto people = std::make_unique<TTestDataSet>(owner);
  people->GetFieldDefs()->Add("ID", ftInteger);
  people->GetFieldDefs()->Add("Name", ftString, 20);
  people->GetFieldDefs()->Add("Age", ftInteger);
  for (int id = 1; id <= count; ++id)
    people->AddRow({id, "Name" + std::to_string(id), 20 + id % 50});
  return people;
}

inline int CurrentID(TDataSet& dataSet) { return dataSet.FieldByName("ID")->GetAsInteger(); }

// Writes down every notification: "active", "inactive", "editing", "browsing", "changed",
// "scrolled <distance>", "layout", "record" or "record <field>", "update".
class TRecordingLink : public TDataLink {
 public:
  explicit TRecordingLink(TDataSource* source = nullptr, int bufferCount = 1) {
    SetBufferCount(bufferCount);
    SetDataSource(source);
  }
  ~TRecordingLink() override { SetDataSource(nullptr); }

  std::vector<std::string> Events;
  std::vector<std::string> Take() { return std::exchange(Events, {}); }

 protected:
  void ActiveChanged() override { Events.push_back(GetActive() ? "active" : "inactive"); }
  void EditingChanged() override { Events.push_back(GetEditing() ? "editing" : "browsing"); }
  void DataSetChanged() override { Events.push_back("changed"); }
  void DataSetScrolled(int Distance) override {
    Events.push_back("scrolled " + std::to_string(Distance));
  }
  void LayoutChanged() override { Events.push_back("layout"); }
  void RecordChanged(TField* Field) override {
    Events.push_back(Field ? "record " + Field->GetFieldName() : "record");
  }
  void UpdateData() override { Events.push_back("update"); }
};

// Logs the data set's before/after events by name ("BeforeInsert", "AfterScroll" ...).
inline void LogDataSetEvents(TDataSet& dataSet, std::vector<std::string>& log) {
  auto logger = [&log](const char* name) {
    return [&log, name](TDataSet*) { log.push_back(name); };
  };
  dataSet.SetBeforeOpen(logger("BeforeOpen"));
  dataSet.SetAfterOpen(logger("AfterOpen"));
  dataSet.SetBeforeClose(logger("BeforeClose"));
  dataSet.SetAfterClose(logger("AfterClose"));
  dataSet.SetBeforeInsert(logger("BeforeInsert"));
  dataSet.SetAfterInsert(logger("AfterInsert"));
  dataSet.SetBeforeEdit(logger("BeforeEdit"));
  dataSet.SetAfterEdit(logger("AfterEdit"));
  dataSet.SetBeforePost(logger("BeforePost"));
  dataSet.SetAfterPost(logger("AfterPost"));
  dataSet.SetBeforeCancel(logger("BeforeCancel"));
  dataSet.SetAfterCancel(logger("AfterCancel"));
  dataSet.SetBeforeDelete(logger("BeforeDelete"));
  dataSet.SetAfterDelete(logger("AfterDelete"));
  dataSet.SetBeforeScroll(logger("BeforeScroll"));
  dataSet.SetAfterScroll(logger("AfterScroll"));
  dataSet.SetOnNewRecord(logger("OnNewRecord"));
}

}  // namespace orv::test
