// A TORVData over an application's vector of 1,000,000 records (an integer, a 20-character string
// and a float), each case against its floor, the same work done by a plain loop over the vector:
//  - EngineAppend / VectorAppend: appending every record (Append, three field writes, Post);
//  - EngineScan / VectorScan: a full scan reading all three fields of every record;
//  - EngineRecNoJump / VectorJump: 1,000 jumps to random record numbers, reading the integer.
// The ratio of each Engine case to its Vector floor is the figure to read.

#include <benchmark/benchmark.h>

#include <random>

#include "ORVData.h"

namespace {

using namespace orv;

constexpr int RecordCount = 1'000'000;
constexpr int JumpCount = 1'000;

struct TItem {
  int32_t ID;
  String Name;
  double Score;
};

String NameOf(int i) {
  String digits = std::to_string(i);
  return "Item" + String(16 - digits.size(), '0') + digits;  // 20 characters
}

std::vector<String> MakeNames() {
  std::vector<String> names;
  names.reserve(RecordCount);
  for (int i = 0; i < RecordCount; ++i) names.push_back(NameOf(i));
  return names;
}

std::vector<TItem> MakeItems(int count) {
  std::vector<TItem> items;
  items.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) items.push_back({i, NameOf(i), i * 0.5});
  return items;
}

// The application's side: the data events read and write the vector.
void Bind(TORVData& data, std::vector<TItem>& items) {
  data.GetFieldDefs()->Add("ID", ftInteger);
  data.GetFieldDefs()->Add("Name", ftString, 20);
  data.GetFieldDefs()->Add("Score", ftFloat);
  data.SetOnCountRecords(
      [&items](TDataSet*, int32_t& Count) { Count = static_cast<int32_t>(items.size()); });
  data.SetOnGetFieldData([&items](TDataSet*, int32_t Index, TField* Field, Variant& Value) {
    const TItem& item = items[static_cast<size_t>(Index)];
    switch (Field->GetFieldNo()) {
      case 1: Value = item.ID; break;
      case 2: Value = item.Name; break;
      default: Value = item.Score; break;
    }
  });
  data.SetOnSetFieldData([&items](TDataSet*, int32_t Index, TField* Field, const Variant& Value) {
    TItem& item = items[static_cast<size_t>(Index)];
    switch (Field->GetFieldNo()) {
      case 1: item.ID = Value.AsInteger(); break;
      case 2: item.Name = Value.AsString(); break;
      default: item.Score = Value.AsDouble(); break;
    }
  });
  data.SetOnInsertRecord([&items](TDataSet*, int32_t Index) {
    items.insert(items.begin() + Index, TItem{});
  });
}

std::vector<int32_t> RandomRecNos() {
  std::mt19937 random(42);
  std::uniform_int_distribution<int32_t> recNo(1, RecordCount);
  std::vector<int32_t> recNos(JumpCount);
  for (int32_t& value : recNos) value = recNo(random);
  return recNos;
}

void EngineAppend(benchmark::State& state) {
  const std::vector<String> names = MakeNames();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<TItem> items;
    items.reserve(RecordCount);
    TORVData data;
    Bind(data, items);
    data.Open();
    TField* id = data.FieldByName("ID");
    TField* name = data.FieldByName("Name");
    TField* score = data.FieldByName("Score");
    state.ResumeTiming();
    for (int i = 0; i < RecordCount; ++i) {
      data.Append();
      id->SetAsInteger(i);
      name->SetAsString(names[static_cast<size_t>(i)]);
      score->SetAsFloat(i * 0.5);
      data.Post();
    }
    benchmark::DoNotOptimize(items.data());
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(EngineAppend)->Unit(benchmark::kMillisecond);

void VectorAppend(benchmark::State& state) {
  const std::vector<String> names = MakeNames();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<TItem> items;
    items.reserve(RecordCount);
    state.ResumeTiming();
    for (int i = 0; i < RecordCount; ++i) items.push_back({i, names[static_cast<size_t>(i)], i * 0.5});
    benchmark::DoNotOptimize(items.data());
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(VectorAppend)->Unit(benchmark::kMillisecond);

void EngineScan(benchmark::State& state) {
  std::vector<TItem> items = MakeItems(RecordCount);
  TORVData data;
  Bind(data, items);
  data.Open();
  TField* id = data.FieldByName("ID");
  TField* name = data.FieldByName("Name");
  TField* score = data.FieldByName("Score");
  for (auto _ : state) {
    int64_t ids = 0;
    size_t length = 0;
    double scores = 0;
    for (data.First(); !data.GetEOF(); data.Next()) {
      ids += id->GetAsInteger();
      length += name->GetAsString().size();
      scores += score->GetAsFloat();
    }
    benchmark::DoNotOptimize(ids);
    benchmark::DoNotOptimize(length);
    benchmark::DoNotOptimize(scores);
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(EngineScan)->Unit(benchmark::kMillisecond);

// The floor reads the name as a copy, as the field hands it over.
void VectorScan(benchmark::State& state) {
  const std::vector<TItem> items = MakeItems(RecordCount);
  for (auto _ : state) {
    int64_t ids = 0;
    size_t length = 0;
    double scores = 0;
    for (const TItem& item : items) {
      ids += item.ID;
      String name = item.Name;
      benchmark::DoNotOptimize(name.data());
      length += name.size();
      scores += item.Score;
    }
    benchmark::DoNotOptimize(ids);
    benchmark::DoNotOptimize(length);
    benchmark::DoNotOptimize(scores);
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}
BENCHMARK(VectorScan)->Unit(benchmark::kMillisecond);

void EngineRecNoJump(benchmark::State& state) {
  std::vector<TItem> items = MakeItems(RecordCount);
  const std::vector<int32_t> recNos = RandomRecNos();
  TORVData data;
  Bind(data, items);
  data.Open();
  TField* id = data.FieldByName("ID");
  for (auto _ : state) {
    int64_t ids = 0;
    for (int32_t recNo : recNos) {
      data.SetRecNo(recNo);
      ids += id->GetAsInteger();
    }
    benchmark::DoNotOptimize(ids);
  }
  state.SetItemsProcessed(state.iterations() * JumpCount);
}
BENCHMARK(EngineRecNoJump)->Unit(benchmark::kMicrosecond);

void VectorJump(benchmark::State& state) {
  const std::vector<TItem> items = MakeItems(RecordCount);
  const std::vector<int32_t> recNos = RandomRecNos();
  for (auto _ : state) {
    int64_t ids = 0;
    for (int32_t recNo : recNos) ids += items[static_cast<size_t>(recNo - 1)].ID;
    benchmark::DoNotOptimize(ids);
  }
  state.SetItemsProcessed(state.iterations() * JumpCount);
}
BENCHMARK(VectorJump)->Unit(benchmark::kMicrosecond);

}  // namespace
