// What lookups, loading, memory, shadows, edits, starts and comparisons cost. Arguments are those of Google Benchmark;
// the exit status is 1 when something is beyond its limit.

#include <benchmark/benchmark.h>

#include <cstdio>

#include "cases.hpp"
#include "compared.hpp"

int main(int argc, char** argv) {
  bench::RegisterLookups();
  bench::RegisterPartialPathnames();
  bench::RegisterLoading();
  bench::RegisterMemory();
  bench::RegisterShadows();
  bench::RegisterEditing();
  bench::RegisterStarting();
  bench::RegisterDeduplication();
  bench::RegisterComparisons();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;

  const int beyondLimit = bench::RunAndReport();
  if (beyondLimit > 0) std::printf("%d beyond the limit\n", beyondLimit);
  return beyondLimit > 0 ? 1 : 0;
}
