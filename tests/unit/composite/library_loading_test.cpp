// What loading and unloading the library does. This program does not link it.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <foundation/log/diagnostic_logger.hpp>

namespace foundation::log {
namespace {

const char* const kLogger = "searchpath::utilities::deduplicatedpath";

TEST(LibraryLoading, MakesTheLoggerAndUnloadingTakesItAway) {
  ASSERT_EQ(FindDiagnosticLogger(kLogger), nullptr);
  for (int round = 0; round < 2; ++round) {
    void* const library = dlopen(SPU_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(FindDiagnosticLogger(kLogger), nullptr);

    ASSERT_EQ(dlclose(library), 0) << dlerror();
    ASSERT_EQ(dlopen(SPU_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the system keeps the library";
    EXPECT_EQ(FindDiagnosticLogger(kLogger), nullptr);
  }
}

}  // namespace
}  // namespace foundation::log
