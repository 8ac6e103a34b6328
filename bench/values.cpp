// Variant against std::variant and the standard conversions: copying, constructing and turning
// numbers into text. Each Variant benchmark has its peer, doing the same work, right after it;
// compare them as ratios within one run.

#include <benchmark/benchmark.h>

#include <charconv>
#include <string>
#include <variant>

#include "Variants.h"

namespace {

using orv::Variant;
using Peer = std::variant<std::monostate, int64_t, double, std::string>;

const std::string Text20 = "abcdefghijklmnopqrst";

void VariantCopyInteger(benchmark::State& state) {
  const Variant source(int64_t(42));
  for (auto _ : state) {
    Variant copy = source;
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(VariantCopyInteger);

void PeerCopyInteger(benchmark::State& state) {
  const Peer source(int64_t(42));
  for (auto _ : state) {
    Peer copy = source;
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(PeerCopyInteger);

void VariantCopyString20(benchmark::State& state) {
  const Variant source(Text20);
  for (auto _ : state) {
    Variant copy = source;
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(VariantCopyString20);

void PeerCopyString20(benchmark::State& state) {
  const Peer source(Text20);
  for (auto _ : state) {
    Peer copy = source;
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(PeerCopyString20);

void VariantFromInteger(benchmark::State& state) {
  int64_t i = 0;
  for (auto _ : state) {
    Variant v(++i);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(VariantFromInteger);

void PeerFromInteger(benchmark::State& state) {
  int64_t i = 0;
  for (auto _ : state) {
    Peer v(++i);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(PeerFromInteger);

void VariantFromString20(benchmark::State& state) {
  for (auto _ : state) {
    Variant v(Text20);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(VariantFromString20);

void PeerFromString20(benchmark::State& state) {
  for (auto _ : state) {
    Peer v(Text20);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(PeerFromString20);

void VariantIntegerToText(benchmark::State& state) {
  const Variant v(1234567);
  for (auto _ : state) benchmark::DoNotOptimize(v.AsString());
}
BENCHMARK(VariantIntegerToText);

void PeerIntegerToText(benchmark::State& state) {
  int value = 1234567;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);  // the value is unknown to the compiler each time
    benchmark::DoNotOptimize(std::to_string(value));
  }
}
BENCHMARK(PeerIntegerToText);

// FloatToStr writes 15 significant digits, shortest form; the peer writes the same digits.
void VariantDoubleToText(benchmark::State& state) {
  const Variant v(1234.5678);
  for (auto _ : state) benchmark::DoNotOptimize(v.AsString());
}
BENCHMARK(VariantDoubleToText);

void PeerDoubleToText(benchmark::State& state) {
  double value = 1234.5678;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                   std::chars_format::general, 15).ptr;
    benchmark::DoNotOptimize(std::string(buffer, end));
  }
}
BENCHMARK(PeerDoubleToText);

}  // namespace
