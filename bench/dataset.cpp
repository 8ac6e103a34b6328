// The data-set framework on its hot paths, each against its floor in the same run:
//  - scrolling 1,000,000 records of the tests' in-memory data set with a 10-row grid link
//    attached, reading one integer per record, against a plain loop over the same rows;
//  - a data event with no link attached, against an empty virtual call;
//  - FieldByName among 200 fields, against a scan comparing the names without case.
// Compare each pair as a ratio.

#include <benchmark/benchmark.h>

// The test data set is the tests' own; it is compiled into this program as it stands.
#include "../tests/framework/TestDataSet.cpp"
#include "../tests/framework/TestDataSetValues.cpp"

namespace {

using namespace orv;
using orv::test::TTestDataSet;

constexpr int RecordCount = 1'000'000;

std::unique_ptr<TTestDataSet> MakeNumbers(int count) {
  auto data = std::make_unique<TTestDataSet>();
  data->GetFieldDefs()->Add("ID", ftInteger);
  data->GetFieldDefs()->Add("Name", ftString, 20);
  data->GetTable()->Rows.reserve(count);
  for (int i = 0; i < count; ++i) data->AddRow({i, "Name"});
  return data;
}

class TGridLink : public TDataLink {
 public:
  TGridLink(TDataSource* source, int rows) {
    SetBufferCount(rows);
    SetDataSource(source);
  }
  ~TGridLink() override { SetDataSource(nullptr); }
  int64_t Scrolled = 0;

 protected:
  void DataSetScrolled(int Distance) override { Scrolled += Distance; }
};

void ScrollWithGrid(benchmark::State& state) {
  auto data = MakeNumbers(RecordCount);
  TDataSource source;
  source.SetDataSet(data.get());
  TGridLink grid(&source, 10);
  data->Open();
  TField* id = data->FieldByName("ID");
  for (auto _ : state) {
    int64_t sum = 0;
    for (data->First(); !data->GetEOF(); data->Next()) sum += id->GetAsInteger();
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(ScrollWithGrid)->Unit(benchmark::kMillisecond);

void ScrollPlainLoop(benchmark::State& state) {
  auto data = MakeNumbers(RecordCount);
  const auto& rows = data->GetTable()->Rows;
  for (auto _ : state) {
    int64_t sum = 0;
    for (const auto& row : rows) sum += row[0].AsInteger();
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(ScrollPlainLoop)->Unit(benchmark::kMillisecond);

// Sends data events the way the framework does internally.
class TEventDataSet : public TTestDataSet {
 public:
  void Send() { DataEvent(deRecordChange, 0); }
  virtual void Nothing() {}
};

void DataEventWithoutLink(benchmark::State& state) {
  TEventDataSet data;
  data.GetFieldDefs()->Add("ID", ftInteger);
  data.Open();
  for (auto _ : state) data.Send();
}
BENCHMARK(DataEventWithoutLink);

void EmptyVirtualCall(benchmark::State& state) {
  TEventDataSet data;
  TEventDataSet* volatile target = &data;
  for (auto _ : state) target->Nothing();
}
BENCHMARK(EmptyVirtualCall);

std::unique_ptr<TTestDataSet> MakeWide(int fields) {
  auto data = std::make_unique<TTestDataSet>();
  for (int i = 0; i < fields; ++i) data->GetFieldDefs()->Add("Field" + std::to_string(i), ftInteger);
  data->Open();
  return data;
}

void FieldByNameHashed(benchmark::State& state) {
  auto data = MakeWide(200);
  const String name = "FIELD150";
  for (auto _ : state) benchmark::DoNotOptimize(data->FieldByName(name));
}
BENCHMARK(FieldByNameHashed);

void FieldByNameScan(benchmark::State& state) {
  auto data = MakeWide(200);
  const String name = "FIELD150";
  TFields* fields = data->GetFields();
  for (auto _ : state) {
    TField* found = nullptr;
    for (int i = 0; i < fields->GetCount() && !found; ++i)
      if (SameText(fields->GetField(i)->GetFieldName(), name)) found = fields->GetField(i);
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(FieldByNameScan);

}  // namespace
