// Reading published properties: through a resolved record, by name, and as a Variant, against
// the plain C++ getter as the floor.

#include <benchmark/benchmark.h>

#include "Persistent.h"
#include "TypInfo.h"

namespace orv::bench {

class TCustomer : public TPersistent {
  ORV_CLASS(TCustomer, TPersistent)
 public:
  int32_t GetAge() const { return FAge; }
  void SetAge(int32_t value) { FAge = value; }
  const String& GetName() const { return FName; }
  void SetName(const String& value) { FName = value; }
  // Enough properties before the measured ones that a linear search would show.
  int32_t GetA() const { return 0; }

 private:
  int32_t FAge = 42;
  String FName = "A customer name longer than the small string buffer";
};

ORV_PUBLISH(TCustomer) {
  for (const char* name : {"Alpha", "Beta", "Gamma", "Delta", "Epsilon", "Zeta", "Eta", "Theta",
                           "Iota", "Kappa", "Lambda", "Mu", "Nu", "Xi", "Omicron", "Pi"})
    p.Property(name, &TCustomer::GetA);
  p.Property("Age", &TCustomer::GetAge, &TCustomer::SetAge);
  p.Property("Name", &TCustomer::GetName, &TCustomer::SetName);
}

namespace {

void IntegerDirect(benchmark::State& state) {
  TCustomer customer;
  const TCustomer* volatile target = &customer;
  for (auto _ : state) benchmark::DoNotOptimize(target->GetAge());
}

void IntegerByRecord(benchmark::State& state) {
  TCustomer customer;
  PPropInfo age = GetPropInfo(&customer, "Age");
  for (auto _ : state) benchmark::DoNotOptimize(GetOrdProp(&customer, age));
}

void IntegerByName(benchmark::State& state) {
  TCustomer customer;
  for (auto _ : state) benchmark::DoNotOptimize(GetOrdProp(&customer, "age"));
}

void IntegerAsVariant(benchmark::State& state) {
  TCustomer customer;
  PPropInfo age = GetPropInfo(&customer, "Age");
  for (auto _ : state) benchmark::DoNotOptimize(GetPropValue(&customer, age));
}

void StringDirect(benchmark::State& state) {
  TCustomer customer;
  const TCustomer* volatile target = &customer;
  for (auto _ : state) {
    String copy = target->GetName();
    benchmark::DoNotOptimize(copy);
  }
}

void StringByRecord(benchmark::State& state) {
  TCustomer customer;
  PPropInfo name = GetPropInfo(&customer, "Name");
  for (auto _ : state) {
    String copy = GetStrProp(&customer, name);
    benchmark::DoNotOptimize(copy);
  }
}

void StringAsVariant(benchmark::State& state) {
  TCustomer customer;
  PPropInfo name = GetPropInfo(&customer, "Name");
  for (auto _ : state) benchmark::DoNotOptimize(GetPropValue(&customer, name));
}

BENCHMARK(IntegerDirect);
BENCHMARK(IntegerByRecord);
BENCHMARK(IntegerByName);
BENCHMARK(IntegerAsVariant);
BENCHMARK(StringDirect);
BENCHMARK(StringByRecord);
BENCHMARK(StringAsVariant);

}  // namespace
}  // namespace orv::bench
