#include <gtest/gtest.h>

#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <type_traits>
#include <utility>

namespace foundation::storage::vfs {
namespace {

TEST(CanonicalAbsoluteIRI, KeepsItsLocationAndTheTextToShow) {
  const CanonicalAbsoluteIRI canonical(AbsoluteIRI(u"file:///a"), u"shown");

  EXPECT_EQ(canonical.getAbsoluteIRI(), AbsoluteIRI(u"file:///a"));
  EXPECT_EQ(canonical.getShownText(), u"shown");
}

TEST(CanonicalAbsoluteIRI, IsEqualWhateverTextIsShown) {
  const AbsoluteIRI location(u"file:///a");

  EXPECT_EQ(CanonicalAbsoluteIRI(location, u"one"), CanonicalAbsoluteIRI(location, u"other"));
  EXPECT_NE(CanonicalAbsoluteIRI(location, u"one"), CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///b"), u"one"));
}

TEST(CanonicalAbsoluteIRI, HandsItsLocationOutByValueWhenItGoes) {
  CanonicalAbsoluteIRI canonical(AbsoluteIRI(u"file:///a"), u"");

  EXPECT_EQ(std::move(canonical).getAbsoluteIRI(), AbsoluteIRI(u"file:///a"));
  EXPECT_TRUE((std::is_same_v<decltype(std::declval<CanonicalAbsoluteIRI>().getAbsoluteIRI()), AbsoluteIRI>));
}

}  // namespace
}  // namespace foundation::storage::vfs
