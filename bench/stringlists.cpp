// String lists against plain C++ containers doing the same work in the same run: reading text
// into lines, sorting with the list's collation, and building a sorted list line by line.
// The ratio of each TStringList case to its peer is the figure to read.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <set>

#include "StringLists.h"
#include "SysUtils.h"

namespace {

using orv::String;

std::vector<String> Words(size_t count) {
  std::mt19937 random(42);
  std::vector<String> words;
  for (size_t i = 0; i < count; ++i) {
    String word;
    for (int n = 4 + static_cast<int>(random() % 8); n > 0; --n)
      word += static_cast<char>((random() % 2 ? 'a' : 'A') + random() % 26);
    words.push_back(word);
  }
  return words;
}

String Text(size_t lines) {
  String text;
  for (const String& word : Words(lines)) text += word + "=" + std::to_string(word.size()) + "\r\n";
  return text;
}

void StringListSetText(benchmark::State& state) {
  const String text = Text(static_cast<size_t>(state.range(0)));
  orv::TStringList list;
  for (auto _ : state) {
    list.SetText(text);
    benchmark::DoNotOptimize(list.GetCount());
  }
}

void VectorSplitText(benchmark::State& state) {
  const String text = Text(static_cast<size_t>(state.range(0)));
  std::vector<String> lines;
  for (auto _ : state) {
    lines.clear();
    for (size_t pos = 0; pos < text.size();) {
      const size_t end = text.find_first_of("\r\n", pos);
      lines.push_back(text.substr(pos, end - pos));
      pos = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    benchmark::DoNotOptimize(lines.size());
  }
}

void StringListSort(benchmark::State& state) {
  const std::vector<String> words = Words(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    orv::TStringList list;
    list.AddStrings(words);
    list.Sort();
    benchmark::DoNotOptimize(list.Get(0));
  }
}

void VectorSortCollated(benchmark::State& state) {
  const std::vector<String> words = Words(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<String> sorted = words;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const String& a, const String& b) { return orv::AnsiCompareText(a, b) < 0; });
    benchmark::DoNotOptimize(sorted.front());
  }
}

void StringListSortedAdd(benchmark::State& state) {
  const std::vector<String> words = Words(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    orv::TStringList list;
    list.SetSorted(true);
    list.SetDuplicates(orv::dupAccept);
    for (const String& word : words) list.Add(word);
    benchmark::DoNotOptimize(list.Get(0));
  }
}

void VectorSortedInsert(benchmark::State& state) {
  const std::vector<String> words = Words(static_cast<size_t>(state.range(0)));
  auto less = [](const String& a, const String& b) { return orv::AnsiCompareText(a, b) < 0; };
  for (auto _ : state) {
    std::vector<String> sorted;
    for (const String& word : words)
      sorted.insert(std::lower_bound(sorted.begin(), sorted.end(), word, less), word);
    benchmark::DoNotOptimize(sorted.front());
  }
}

void MultisetCollatedAdd(benchmark::State& state) {
  const std::vector<String> words = Words(static_cast<size_t>(state.range(0)));
  auto less = [](const String& a, const String& b) { return orv::AnsiCompareText(a, b) < 0; };
  for (auto _ : state) {
    std::multiset<String, decltype(less)> set(less);
    for (const String& word : words) set.insert(word);
    benchmark::DoNotOptimize(*set.begin());
  }
}

}  // namespace

BENCHMARK(StringListSetText)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorSplitText)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(StringListSort)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorSortCollated)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(StringListSortedAdd)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorSortedInsert)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(MultisetCollatedAdd)->Arg(20000)->Unit(benchmark::kMillisecond);
