#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <utility>

#include "exit_status.hpp"

namespace vornixpath {

/// Where commands keep the session's path, in storage of a test's own.
inline const std::string kSession = "memory:///state/path";

/// What came of running a command.
struct Outcome {
  ExitStatus status = ExitStatus::Yes;
  std::string out;
  std::string err;
};

/// Calls `run`, keeping what it writes.
template <class Run>
Outcome OutcomeOf(const Run& run) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const ExitStatus status = run();
  std::cout.flush();
  std::string out = testing::internal::GetCapturedStdout();
  return {status, std::move(out), testing::internal::GetCapturedStderr()};
}

}  // namespace vornixpath
