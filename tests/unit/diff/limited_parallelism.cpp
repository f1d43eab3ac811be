// ThreadSanitizer does not see how oneTBB, a library that was built without it, orders its threads: it would report
// hundreds of races that are none. So under it oneTBB keeps to the thread that calls. What we ourselves share between
// threads is still watched, in the tests that start threads of their own.

#if defined(__SANITIZE_THREAD__)
#define SPU_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define SPU_THREAD_SANITIZER 1
#endif
#endif

#ifdef SPU_THREAD_SANITIZER
#include <tbb/global_control.h>

namespace {
const tbb::global_control onlyTheCaller(tbb::global_control::max_allowed_parallelism, 1);
}  // namespace
#endif
