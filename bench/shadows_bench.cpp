#include <fakes/forwarding_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_utilities/lookup.hpp>
#include <shadow.hpp>
#include <shadow_grading.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "cases.hpp"
#include "compared.hpp"
#include "made_path.hpp"

namespace bench {

namespace {

using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::detail::SearchTarget;

constexpr double kLimit = 2.0;

const std::vector<std::u16string> kExtensions = {u".vnx"};

const MadePath& Made() { return PathOf(10'000); }

// As they stand in the folders, so that memory is asked in the order that it likes best.
std::vector<std::u16string> EveryPlainName() {
  std::vector<std::u16string> names = Made().names;
  names.emplace_back(kCommonName);
  return names;
}

// One FindAllInScope for each distinct plain name. Those in packages, a few thousand, would cost many times as much.
void FindEachName(benchmark::State& state) {
  const auto names = EveryPlainName();
  std::size_t files = 0;
  for (auto unused : state) {
    static_cast<void>(unused);
    for (const std::u16string& name : names) {
      const SearchTarget target(name, kExtensions);
      files += Made().path->FindAllInScope(MainScope, target, FilenameMatchingPolicy::Native).size();
    }
    benchmark::DoNotOptimize(files);
  }
}

// Stops at the first file that is opened. To count every call would cost as much as the calls.
class NoReading final : public foundation::storage::fakes::IStorageObserver {
 public:
  void BeforeCall(StorageOperation operation, const foundation::storage::vfs::AbsoluteIRI& /*location*/) override {
    if (operation == StorageOperation::OpenForReading) throw std::logic_error("a file was opened");
  }
};

void FindAndGradeShadows(benchmark::State& state) {
  using foundation::storage::fakes::ForwardingStorageProvider;
  const auto storage = std::make_shared<ForwardingStorageProvider>(Made().tree, std::make_shared<NoReading>());
  const auto mounted = VornixStorageSystem::Mount(u"file", storage);
  for (auto unused : state) {
    static_cast<void>(unused);
    vornixpath::ShadowGrading grade(VornixStorageSystem::GetStorageSystemReference());
    std::vector<vornixpath::GradedShadow> graded;
    for (vornixpath::Shadow& shadow : vornixpath::FindShadows(*Made().path, kExtensions)) {
      graded.push_back(grade(std::move(shadow)));
    }
    benchmark::DoNotOptimize(graded.data());
    if (graded.size() != 9 * Made().shadowing.size() + 9'999) state.SkipWithError("not what the tree hides");
  }
}

}  // namespace

void RegisterShadows() { Compare("shadows/10000 folders of 100 files", kLimit, FindEachName, FindAndGradeShadows); }

}  // namespace bench
