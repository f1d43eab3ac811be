#pragma once

#include <barrier>
#include <cstddef>
#include <thread>
#include <vector>

namespace Quorvex::PathManagement::support {

/// Calls `run(index)` on `count` threads that start at the same moment, and returns when all have ended. `run` must not
/// throw.
template <class Run>
void RunTogether(std::size_t count, const Run& run) {
  std::barrier start(static_cast<std::ptrdiff_t>(count));
  std::vector<std::jthread> threads;
  threads.reserve(count);
  for (std::size_t index = 0; index < count; ++index) {
    threads.emplace_back([&start, &run, index] {
      start.arrive_and_wait();
      run(index);
    });
  }
}

}  // namespace Quorvex::PathManagement::support
