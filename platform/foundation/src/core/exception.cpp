#include <foundation/core/except/exception.hpp>

namespace foundation::core::except {

IInternalException::~IInternalException() = default;

}  // namespace foundation::core::except
