// How the platform's exceptions are put together: an interface that says whose they are, over a standard base. Values,
// copied without throwing; no storage is touched.
#pragma once

#include <exception>
#include <foundation/export.hpp>

namespace foundation::core::except {

/// Marks an exception that one part of the system raises for another, with no text meant for the end user.
class FOUNDATION_EXPORT IInternalException {
 public:
  virtual ~IInternalException();

 protected:
  IInternalException() = default;
  IInternalException(const IInternalException&) = default;
  IInternalException& operator=(const IInternalException&) = default;
};

/// An exception of the kind `Interface`, caught as that or as `Base`. The third parameter is open to specialisation.
template <class Interface, class Base = std::exception, class = void>
class FOUNDATION_EXPORT Exception : public Interface, public Base {
 public:
  using Base::Base;
  Exception() = default;
};

}  // namespace foundation::core::except
