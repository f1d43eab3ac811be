#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace bench {

/// Calls `ask` with one name after another, each as often as the others.
template <class Ask>
void AskInTurn(benchmark::State& state, const std::vector<std::u16string>& names, const Ask& ask) {
  std::size_t next = 0;
  for (auto unused : state) {
    static_cast<void>(unused);
    benchmark::DoNotOptimize(ask(names[next]));
    if (++next == names.size()) next = 0;
  }
}

}  // namespace bench
