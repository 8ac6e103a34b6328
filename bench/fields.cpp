// Finding a field by name: TFields' hashed index (names without regard to case) against, in the
// same run, the scan with the locale's comparison that a plain field list does, and a
// case-sensitive std::unordered_map as the floor. Each pass looks every name up once, written
// in another case than the field's. The ratio of FieldsFindField to its peers is the figure.

#include <benchmark/benchmark.h>

#include <unordered_map>

#include "DB.h"

namespace {

using orv::String;

struct TNamedFields {
  orv::TFields Fields{nullptr};
  std::vector<String> Names;    // as the fields carry them
  std::vector<String> Lookups;  // the same in upper case

  explicit TNamedFields(int count) {
    for (int i = 0; i < count; ++i) {
      auto* field = new orv::TIntegerField(nullptr);  // owned (and freed) by Fields
      Names.push_back("Customer" + std::to_string(i) + "Value");
      field->SetFieldName(Names.back());
      Fields.Add(field);
      Lookups.push_back(orv::UpperCase(Names.back()));
    }
  }
};

void FieldsFindField(benchmark::State& state) {
  TNamedFields named(static_cast<int>(state.range(0)));
  for (auto _ : state)
    for (const String& name : named.Lookups) benchmark::DoNotOptimize(named.Fields.FindField(name));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void LocaleScanFindField(benchmark::State& state) {
  TNamedFields named(static_cast<int>(state.range(0)));
  auto find = [&](const String& name) -> orv::TField* {
    for (int i = 0; i < named.Fields.GetCount(); ++i)
      if (orv::AnsiSameText(named.Fields.GetField(i)->GetFieldName(), name))
        return named.Fields.GetField(i);
    return nullptr;
  };
  for (auto _ : state)
    for (const String& name : named.Lookups) benchmark::DoNotOptimize(find(name));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ExactHashMapFloor(benchmark::State& state) {
  TNamedFields named(static_cast<int>(state.range(0)));
  std::unordered_map<String, orv::TField*> map;
  for (int i = 0; i < named.Fields.GetCount(); ++i)
    map.emplace(named.Lookups[i], named.Fields.GetField(i));
  for (auto _ : state)
    for (const String& name : named.Lookups) benchmark::DoNotOptimize(map.find(name)->second);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(FieldsFindField)->Arg(10)->Arg(100);
BENCHMARK(LocaleScanFindField)->Arg(10)->Arg(100);
BENCHMARK(ExactHashMapFloor)->Arg(10)->Arg(100);
