#pragma once

#include <cstdlib>

/// What must hold for every input: where it does not, the fuzzer has found something.
inline void Require(bool isTrue) {
  if (!isTrue) std::abort();
}
