#pragma once

#include <cstddef>
#include <functional>

namespace Quorvex::PathEnvironment {

/// Calls `work(i)` once for each i below `count` and returns when all calls have returned: on the calling thread and,
/// when there are enough of them, on the process's workers as well, so `work` must be safe from several threads.
///
/// Workers are started for the first call that needs them, wait without cost in between, and are shared by all callers;
/// calls may come from any thread, and from `work` itself. A small `count` stays on the calling thread: to start a
/// thread costs as much as to read dozens of folders. Where no worker can be had, the calling thread does everything.
///
/// When calls throw, the exception of one of them is rethrown, and those not begun by then are never made.
void InParallel(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace Quorvex::PathEnvironment
