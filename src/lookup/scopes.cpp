#include <iterator>
#include <search_path_utilities/lookup.hpp>

namespace Quorvex::PathManagement {

namespace {

constexpr PathEntryType kMainKinds[] = {PathEntryType::Main};
constexpr PathEntryType kVisibleKinds[] = {PathEntryType::Main, PathEntryType::Package, PathEntryType::Class,
                                           PathEntryType::Private, PathEntryType::Auxiliary};

}  // namespace

constinit const SearchScope MainScope(std::begin(kMainKinds), std::end(kMainKinds));
constinit const SearchScope VisibleScope(std::begin(kVisibleKinds), std::end(kVisibleKinds));

}  // namespace Quorvex::PathManagement
