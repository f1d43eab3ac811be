// Benchmarks in pairs: a case and the floor that it is measured against, in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace bench {

/// Registers `floor` and `measured` under `name`. The report shows the median of each and their ratio beside the
/// `limit` it should keep.
void Compare(const std::string& name, double limit, const std::function<void(benchmark::State&)>& floor,
             const std::function<void(benchmark::State&)>& measured);

/// Registers a case whose result is the counter "value", in `unit`, beside its `limit`.
void Measure(const std::string& name, double limit, const std::string& unit,
             const std::function<void(benchmark::State&)>& measured);

/// Runs what is registered and prints the table. The number of ratios and values beyond their limits.
int RunAndReport();

}  // namespace bench
