#include <gtest/gtest.h>

#include <foundation/core/except/exception.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <type_traits>

namespace Quorvex::PathManagement {
namespace {

using foundation::core::except::Exception;
using foundation::core::except::IInternalException;

TEST(RecursivePathChangeException, IsAnInternalExceptionOfThePlatform) {
  EXPECT_TRUE((std::is_base_of_v<Exception<IInternalException, std::exception, void>, RecursivePathChangeException>));
  EXPECT_THROW(throw RecursivePathChangeException(), IInternalException);
  EXPECT_THROW(throw RecursivePathChangeException(), std::exception);
}

TEST(RecursivePathChangeException, CarriesNoText) {
  EXPECT_STREQ(RecursivePathChangeException().what(), std::exception().what());
}

TEST(RecursivePathChangeException, IsMadeAndCopiedWithoutFailing) {
  EXPECT_TRUE(std::is_nothrow_default_constructible_v<RecursivePathChangeException>);
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<RecursivePathChangeException>);
  EXPECT_TRUE(std::is_nothrow_copy_assignable_v<RecursivePathChangeException>);
}

}  // namespace
}  // namespace Quorvex::PathManagement
