// Sorting a TORVData of 1,000,000 records, each case against its floor in the same run:
//  - by a text field, and by a text field then a descending integer field, against std::sort
//    of an index vector over the same Variant vectors with the same comparison (the locale's
//    case-insensitive collation, then the integer); the text sort also against the same names
//    held as plain strings;
//  - 10,000 single appends into the data set sorted by the text field (a binary search and a
//    block move of the index list each), against std::upper_bound and vector::insert on an
//    index vector over the same values.
// The application keeps its values as Variants, so that handing one over shares it. Read each
// pair as a ratio: SortByName / StdSortByName, SortByCityAndAgeDesc / StdSortByCityAndAgeDesc,
// InsertIntoSortedDataSet / InsertIntoSortedVector.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "ORVData.h"

namespace {

using namespace orv;

constexpr int32_t RecordCount = 1'000'000;
constexpr int32_t InsertCount = 10'000;

String RandomName(std::mt19937& random) {
  String name(4 + random() % 8, ' ');
  for (char& c : name) c = static_cast<char>((random() % 2 ? 'a' : 'A') + random() % 26);
  return name;
}

// The application: a name, one of 200 cities and an age per record.
struct TPeople {
  std::vector<Variant> Names, Cities, Ages;
  std::vector<String> NameTexts;  // a floor's copy, as plain strings

  TPeople() {
    std::mt19937 random(42);
    std::vector<String> cities(200);
    for (String& city : cities) city = RandomName(random);
    for (int32_t i = 0; i < RecordCount; ++i)
      Add(RandomName(random), cities[random() % cities.size()], int32_t(random() % 90));
  }
  void Add(const String& name, const String& city, int32_t age) {
    NameTexts.push_back(name);
    Names.emplace_back(name);
    Cities.emplace_back(city);
    Ages.emplace_back(age);
  }
};

TPeople& People() {
  static TPeople people;
  return people;
}

// A TORVData over a copy of the people's values, its events answering from the vectors.
struct TPeopleData {
  std::vector<Variant> Names = People().Names, Cities = People().Cities, Ages = People().Ages;
  TORVData Data;

  TPeopleData() {
    Data.GetFieldDefs()->Add("Name", ftString, 20);
    Data.GetFieldDefs()->Add("City", ftString, 20);
    Data.GetFieldDefs()->Add("Age", ftInteger);
    Data.SetOnCountRecords(
        [this](TDataSet*, int32_t& Count) { Count = static_cast<int32_t>(Names.size()); });
    Data.SetOnGetFieldData([this](TDataSet*, int32_t Index, TField* Field, Variant& Value) {
      Value = Column(Field)[static_cast<size_t>(Index)];
    });
    Data.SetOnSetFieldData([this](TDataSet*, int32_t Index, TField* Field, const Variant& Value) {
      Column(Field)[static_cast<size_t>(Index)] = Value;
    });
    Data.SetOnInsertRecord([this](TDataSet*, int32_t Index) {
      for (auto* column : {&Names, &Cities, &Ages})
        column->insert(column->begin() + Index, Variant());
    });
  }
  std::vector<Variant>& Column(TField* Field) {
    switch (Field->GetFieldNo()) {
      case 1:
        return Names;
      case 2:
        return Cities;
      default:
        return Ages;
    }
  }
};

void SortDataSet(benchmark::State& state, const char* indexFieldNames) {
  TPeopleData people;
  people.Data.Open();
  for (auto _ : state) {
    people.Data.SetIndexFieldNames(indexFieldNames);
    state.PauseTiming();
    people.Data.SetIndexFieldNames("");  // back to natural order
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}

void SortByName(benchmark::State& state) { SortDataSet(state, "Name"); }
BENCHMARK(SortByName)->Unit(benchmark::kMillisecond);

void SortByCityAndAgeDesc(benchmark::State& state) { SortDataSet(state, "City;Age DESC"); }
BENCHMARK(SortByCityAndAgeDesc)->Unit(benchmark::kMillisecond);

template <class Less>
void SortIndexVector(benchmark::State& state, Less less) {
  std::vector<int32_t> order(RecordCount);
  for (auto _ : state) {
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), less);
    benchmark::DoNotOptimize(order.data());
  }
  state.SetItemsProcessed(state.iterations() * RecordCount);
}

// The floors read the same Variant vectors the data set's events hand over.
int CompareText(const Variant& a, const Variant& b) {
  return AnsiCompareText(a.StrView(), b.StrView());
}

void StdSortByName(benchmark::State& state) {
  const auto& names = People().Names;
  SortIndexVector(state, [&](int32_t a, int32_t b) { return CompareText(names[a], names[b]) < 0; });
}
BENCHMARK(StdSortByName)->Unit(benchmark::kMillisecond);

// The same names as plain strings of 4 to 11 bytes, which lie inside the vector: one cache
// miss a value instead of two (the Variant, then its shared text).
void StdSortByNameStrings(benchmark::State& state) {
  const auto& names = People().NameTexts;
  SortIndexVector(state,
                  [&](int32_t a, int32_t b) { return AnsiCompareText(names[a], names[b]) < 0; });
}
BENCHMARK(StdSortByNameStrings)->Unit(benchmark::kMillisecond);

void StdSortByCityAndAgeDesc(benchmark::State& state) {
  const auto& cities = People().Cities;
  const auto& ages = People().Ages;
  SortIndexVector(state, [&](int32_t a, int32_t b) {
    const int byCity = CompareText(cities[a], cities[b]);
    return byCity != 0 ? byCity < 0 : ages[a].AsInteger() > ages[b].AsInteger();
  });
}
BENCHMARK(StdSortByCityAndAgeDesc)->Unit(benchmark::kMillisecond);

std::vector<String> NewNames() {
  std::mt19937 random(7);
  std::vector<String> names(InsertCount);
  for (String& name : names) name = RandomName(random);
  return names;
}

void InsertIntoSortedDataSet(benchmark::State& state) {
  const std::vector<String> names = NewNames();
  for (auto _ : state) {
    state.PauseTiming();
    auto people = std::make_unique<TPeopleData>();
    people->Data.SetIndexFieldNames("Name");
    people->Data.Open();
    TField* name = people->Data.FieldByName("Name");
    state.ResumeTiming();
    for (const String& text : names) {
      people->Data.Append();
      name->SetAsString(text);
      people->Data.Post();
    }
    state.PauseTiming();
    people.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * InsertCount);
}
BENCHMARK(InsertIntoSortedDataSet)->Unit(benchmark::kMillisecond);

void InsertIntoSortedVector(benchmark::State& state) {
  const std::vector<String> names = NewNames();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Variant> values = People().Names;
    std::vector<int32_t> order(RecordCount);
    std::iota(order.begin(), order.end(), 0);
    auto less = [&](int32_t a, int32_t b) { return CompareText(values[a], values[b]) < 0; };
    std::sort(order.begin(), order.end(), less);
    state.ResumeTiming();
    for (const String& text : names) {
      values.emplace_back(text);
      const int32_t added = static_cast<int32_t>(values.size()) - 1;
      order.insert(std::upper_bound(order.begin(), order.end(), added, less), added);
    }
    benchmark::DoNotOptimize(order.data());
  }
  state.SetItemsProcessed(state.iterations() * InsertCount);
}
BENCHMARK(InsertIntoSortedVector)->Unit(benchmark::kMillisecond);

}  // namespace
