// Text comparison and number conversion against plain C++ peers in the same run.
//
// Sorting compares names through the cached ICU collator on UTF-8 directly; the peers are the
// byte order (the floor), the ASCII case-blind order, and the same collation reached through a
// UTF-16 copy of both texts per comparison.

#include "SysUtils.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using orv::String;

std::vector<String> Names(size_t count) {
  static const char* const parts[] = {"m\u00fcller", "Meyer", "schmidt",    "\u00c5sa", "Zo\u00eb",
                                      "anders",      "BERG",  "\u00e9mile", "Nils",     "o'brien"};
  std::mt19937 random(42);
  std::vector<String> names;
  names.reserve(count);
  for (size_t i = 0; i < count; ++i)
    names.push_back(String(parts[random() % 10]) + " " + parts[random() % 10] +
                    std::to_string(random() % 1000));
  return names;
}

template <class Less>
void SortNames(benchmark::State& state, Less less) {
  const std::vector<String> names = Names(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<String> copy = names;
    std::sort(copy.begin(), copy.end(), less);
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SortByBytes(benchmark::State& state) {
  SortNames(state, [](const String& a, const String& b) { return a < b; });
}
void SortByCompareText(benchmark::State& state) {
  SortNames(state, [](const String& a, const String& b) { return orv::CompareText(a, b) < 0; });
}
void SortByAnsiCompareText(benchmark::State& state) {
  SortNames(state, [](const String& a, const String& b) { return orv::AnsiCompareText(a, b) < 0; });
}
void SortByUtf16Collation(benchmark::State& state) {
  SortNames(state, [](const String& a, const String& b) {
    return orv::AnsiCompareText(orv::Utf8ToUtf16(a), orv::Utf8ToUtf16(b)) < 0;
  });
}
BENCHMARK(SortByBytes)->Arg(10000);
BENCHMARK(SortByCompareText)->Arg(10000);
BENCHMARK(SortByAnsiCompareText)->Arg(10000);
BENCHMARK(SortByUtf16Collation)->Arg(10000);

std::vector<double> Doubles() {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> spread(-1e6, 1e6);
  std::vector<double> values(1000);
  for (double& v : values) v = spread(random);
  return values;
}

void FloatToStrOrv(benchmark::State& state) {
  const std::vector<double> values = Doubles();
  const orv::TFormatSettings settings;
  for (auto _ : state)
    for (double v : values) benchmark::DoNotOptimize(orv::FloatToStr(v, settings));
  state.SetItemsProcessed(state.iterations() * values.size());
}
void FloatToStrSnprintf(benchmark::State& state) {
  const std::vector<double> values = Doubles();
  char buffer[32];
  for (auto _ : state)
    for (double v : values) {
      std::snprintf(buffer, sizeof buffer, "%.15g", v);
      benchmark::DoNotOptimize(String(buffer));
    }
  state.SetItemsProcessed(state.iterations() * values.size());
}
BENCHMARK(FloatToStrOrv);
BENCHMARK(FloatToStrSnprintf);

void StrToFloatOrv(benchmark::State& state) {
  std::vector<String> texts;
  for (double v : Doubles()) texts.push_back(orv::FloatToStr(v));
  const orv::TFormatSettings settings;
  for (auto _ : state)
    for (const String& text : texts) benchmark::DoNotOptimize(orv::StrToFloat(text, settings));
  state.SetItemsProcessed(state.iterations() * texts.size());
}
void StrToFloatStrtod(benchmark::State& state) {
  std::vector<String> texts;
  for (double v : Doubles()) texts.push_back(orv::FloatToStr(v));
  for (auto _ : state)
    for (const String& text : texts) benchmark::DoNotOptimize(std::strtod(text.c_str(), nullptr));
  state.SetItemsProcessed(state.iterations() * texts.size());
}
BENCHMARK(StrToFloatOrv);
BENCHMARK(StrToFloatStrtod);

}  // namespace
