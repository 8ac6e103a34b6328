// Memory streams written in many small pieces against a plain byte vector doing the same appends
// in the same run: the stream grows through Realloc, which must stay amortised constant time.
// The ratio of each stream case to VectorAppend is the figure to read.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "Streams.h"

namespace {

constexpr char Record[16] = "0123456789abcde";

template <class Stream>
void StreamAppend(benchmark::State& state) {
  const int64_t records = state.range(0);
  for (auto _ : state) {
    Stream stream;
    for (int64_t i = 0; i < records; ++i) stream.WriteBuffer(Record, sizeof Record);
    benchmark::DoNotOptimize(stream.Memory());
  }
  state.SetBytesProcessed(state.iterations() * records * static_cast<int64_t>(sizeof Record));
}

void MemoryStreamAppend(benchmark::State& state) { StreamAppend<orv::TMemoryStream>(state); }
void BytesStreamAppend(benchmark::State& state) { StreamAppend<orv::TBytesStream>(state); }

void VectorAppend(benchmark::State& state) {
  const int64_t records = state.range(0);
  for (auto _ : state) {
    std::vector<uint8_t> bytes;
    for (int64_t i = 0; i < records; ++i) bytes.insert(bytes.end(), Record, Record + sizeof Record);
    benchmark::DoNotOptimize(bytes.data());
  }
  state.SetBytesProcessed(state.iterations() * records * static_cast<int64_t>(sizeof Record));
}

}  // namespace

BENCHMARK(MemoryStreamAppend)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BytesStreamAppend)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorAppend)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
