#pragma once

#include <boost/thread/once.hpp>
#include <memory>
#include <utility>

#if defined(__SANITIZE_THREAD__)
#define SPU_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define SPU_THREAD_SANITIZER 1
#endif
#endif

#ifdef SPU_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* address);  // NOLINT(bugprone-reserved-identifier)
extern "C" void __tsan_release(void* address);  // NOLINT(bugprone-reserved-identifier)
#endif

namespace Quorvex::PathManagement::detail {

// Boost's once-flag synchronises inside its own, uninstrumented library; ThreadSanitizer has to be told.
inline void AnnotateOnceRelease([[maybe_unused]] boost::once_flag& flag) {
#ifdef SPU_THREAD_SANITIZER
  __tsan_release(&flag);
#endif
}
inline void AnnotateOnceAcquire([[maybe_unused]] boost::once_flag& flag) {
#ifdef SPU_THREAD_SANITIZER
  __tsan_acquire(&flag);
#endif
}

/// Fills `cache` with what `make` returns, once per `flag`, and hands out a copy of the pointer.
///
/// Concurrent callers wait for one builder. If `make` throws, the flag is rolled back, the cache stays empty and the
/// exception passes to that caller; the next call builds again. The pointer is published atomically, so that
/// `std::atomic_load` may read the cache outside this function at any time. `make` must not come back to the same flag.
template <class T, class Make>
std::shared_ptr<const T> BuildOnce(boost::once_flag& flag, std::shared_ptr<const T>& cache, Make&& make) {
  boost::call_once(flag, [&] {
    std::atomic_store(&cache, std::make_shared<const T>(std::forward<Make>(make)()));
    AnnotateOnceRelease(flag);
  });
  AnnotateOnceAcquire(flag);
  return cache;
}

}  // namespace Quorvex::PathManagement::detail
