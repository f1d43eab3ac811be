// Every exported function and every operation of the exported classes, with each of its requests for memory refused:
// the exception reaches the caller, nothing stays behind, and the same question is answered right afterwards.

#include <gmock/gmock.h>

#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <new>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/manifest_registry.hpp>
#include <search_path_utilities/composite_paths.hpp>
#include <search_path_utilities/is_partial_pathname.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <search_path_utilities/path_entry_vector_differentiator.hpp>
#include <search_path_utilities/services.hpp>
#include <support/allocations.hpp>
#include <support/fake_main_path_manager.hpp>
#include <support/fake_path.hpp>
#include <support/fake_working_folder.hpp>
#include <support/folder_list.hpp>
#include <support/mock_factories.hpp>
#include <support/texts_of.hpp>
#include <unit/environment/memory_storage.hpp>

namespace Quorvex::PathManagement {
namespace {

using foundation::msg_svc::eventmgr::EventMgr;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using foundation::storage::vfs::Folder;
using foundation::storage::vfs::VornixStorageSystem;
using PathEnvironment::ManifestRegistry;
using PathEnvironment::MemoryStorage;
using support::Allocations;
using support::APath;
using support::FakeMainPathManager;
using support::FakePath;
using support::FakeWorkingFolder;
using support::FoldersAt;
using testing::NiceMock;
using VornixComponents::ComponentIdentifier;
using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;
using EntryPtr = std::shared_ptr<const IPathEntry>;
using PathPtr = std::shared_ptr<const IPath>;
using Texts = std::vector<std::string>;

constexpr auto kPolicy = FilenameMatchingPolicy::CaseSensitive;

Texts Shown(bool answer) { return {answer ? "yes" : "no"}; }
Texts Shown(PathEntryType type) { return {std::to_string(static_cast<int>(type))}; }
Texts Shown(const std::u16string& text) { return {testing::PrintToString(text)}; }
Texts Shown(const std::vector<std::u16string>& texts) { return {testing::PrintToString(texts)}; }
Texts Shown(const AbsoluteIRI& location) { return {testing::PrintToString(location.toString())}; }
Texts Shown(const CanonicalAbsoluteIRI& location) { return Shown(location.getAbsoluteIRI()); }
Texts Shown(const boost::optional<AbsoluteIRI>& location) { return location ? Shown(*location) : Texts{"none"}; }
Texts Shown(const std::vector<AbsoluteIRI>& folders) { return {support::NamesOf(folders)}; }
Texts Shown(const EntryPtr& entry) { return {support::LocationOf(entry)}; }
Texts Shown(const std::vector<EntryPtr>& entries) { return support::LocationsOf(entries); }
Texts Shown(const std::shared_ptr<const std::vector<EntryPtr>>& entries) { return Shown(*entries); }
Texts Shown(const boost::optional<FoundItem>& found) { return {support::FileOf(found)}; }
Texts Shown(const std::vector<FoundItem>& found) { return support::FilesOf(found); }
Texts Shown(const detail::SearchTarget& target) {
  return {testing::PrintToString(target.GetBaseName()), testing::PrintToString(target.GetExtensions())};
}

/// How many requests were refused.
std::size_t refusals = 0;

/// What a question may leave behind: nothing, or a cache, or the notes of a fake about what it was asked.
enum class Keeps : std::uint8_t { Nothing, Something };

/// Asks `question` of what `make` makes, with one request for memory after the other refused until none is left to be.
template <class Make, class Ask>
void RefuseEachRequest(const std::string& name, const Make& make, const Ask& ask, Keeps keeps = Keeps::Nothing) {
  SCOPED_TRACE(name);
  const Texts right = Shown(ask(*make()));
  for (std::size_t successes = 0;; ++successes) {
    const auto subject = make();
    bool isRefused = false;
    std::ptrdiff_t left = 0;
    {
      const Allocations watched(successes);
      try {
        static_cast<void>(ask(*subject));
      } catch (const std::bad_alloc&) {
        isRefused = true;
      } catch (const UnableToSaveToolboxCacheException&) {
        isRefused = true;  // it stands for whatever hinders the writing
      }
      left = watched.GetAlive();
    }
    if (isRefused) ++refusals;
    EXPECT_TRUE(keeps == Keeps::Something || left <= 0)
        << left << " blocks left behind when request " << successes + 1 << " was refused";
    EXPECT_EQ(Shown(ask(*subject)), right) << "after request " << successes + 1 << " was refused";
    if (!isRefused || testing::Test::HasFailure()) return;
  }
}

std::shared_ptr<const FakePath> LeftPath() {
  return APath()
      .With(support::Folder("/a").WithFile("f.vnx").WithPackage(support::Folder("pkg").WithFile("g.vnx")))
      .With(support::Folder("/b").WithFile("f.vnx").WithClass(support::Folder("Cls").WithFile("m.vnx")))
      .Build();
}

/// What the questions are about: a path, and entries and locations of it.
struct Subject {
  PathPtr path;
  EntryPtr first;
  EntryPtr below;
};

Subject Of(const PathPtr& path, const FakePath& left) { return {path, left.EntryAt("/a"), left.EntryAt("/a/+pkg")}; }

std::unique_ptr<Subject> Concatenated() {
  const auto left = LeftPath();
  const PathPtr right = APath().With(support::Folder("/c").WithFile("f.vnx")).Build();
  return std::make_unique<Subject>(Of(std::make_shared<const ConcatenatedPath>(left, right), *left));
}

std::unique_ptr<Subject> Deduplicated() {
  const auto left = LeftPath();
  const PathPtr again = APath().With(left->EntryAt("/b")).With(left->EntryAt("/a")).Build();
  return std::make_unique<Subject>(
      Of(std::make_shared<const DeduplicatedPath>(std::vector<PathPtr>{left, again}), *left));
}

std::unique_ptr<Subject> Masked() {
  const auto left = LeftPath();
  const std::vector<EntryPtr> masked = {left->EntryAt("/b")};
  return std::make_unique<Subject>(Of(std::make_shared<const MultiMaskedPath>(left, masked), *left));
}

const std::u16string kF = u"f";
const std::vector<std::u16string> kExtensions = {u".vnx", u".txt"};

void RefuseToPath(std::unique_ptr<Subject> (*make)()) {
  RefuseEachRequest(
      "GetMainEntries", make, [](Subject& on) { return on.path->GetMainEntries(); }, Keeps::Something);
  RefuseEachRequest("GetMethodEntries", make, [](Subject& on) { return on.path->GetMethodEntries(); });
  RefuseEachRequest("GetMethodEntriesByName", make, [](Subject& on) {
    static const std::u16string name = u"Cls";
    return on.path->GetMethodEntriesByName(MainScope, name, kPolicy);
  });
  RefuseEachRequest("GetPartiallyMatchingEntries", make, [](Subject& on) {
    static const std::u16string name = u"pkg";
    return on.path->GetPartiallyMatchingEntries(VisibleScope, name, kPolicy);
  });
  RefuseEachRequest("GetMainEntryForEntry", make, [](Subject& on) { return on.path->GetMainEntryForEntry(*on.below); });
  RefuseEachRequest("GetParentEntryForEntry", make,
                    [](Subject& on) { return on.path->GetParentEntryForEntry(*on.below); });
  RefuseEachRequest("GetPathEntryFromAbsoluteIRI", make, [](Subject& on) {
    return on.path->GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///b"), kPolicy);
  });
  RefuseEachRequest("GetPathEntryFromAbsoluteIRI of a canonical location", make, [](Subject& on) {
    return on.path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///b"), u"b"));
  });
  RefuseEachRequest("FindFirstInScope", make, [](Subject& on) {
    return on.path->FindFirstInScope(VisibleScope, detail::SearchTarget(kF, kExtensions), kPolicy);
  });
  RefuseEachRequest("FindAllInScope", make, [](Subject& on) {
    return on.path->FindAllInScope(VisibleScope, detail::SearchTarget(kF, kExtensions), kPolicy);
  });
  const PathEntryCallback visitAll = [](const EntryPtr&) { return false; };
  RefuseEachRequest("ForEachEntry", make, [&](Subject& on) { return on.path->ForEachEntry(VisibleScope, visitAll); });
  RefuseEachRequest("ConcurrentForEachEntry", make,
                    [&](Subject& on) { return on.path->ConcurrentForEachEntry(VisibleScope, visitAll); });
  RefuseEachRequest("FirstEntryIsBeforeSecondOnPath", make,
                    [](Subject& on) { return on.path->FirstEntryIsBeforeSecondOnPath(*on.first, *on.below); });
  RefuseEachRequest("IsEntryOnPath", make, [](Subject& on) { return on.path->IsEntryOnPath(*on.below); });
}

void RefuseToLookups() {
  RefuseEachRequest("GetPathEntryTypeFromBaseName", Masked, [](Subject&) {
    static const std::u16string name = u"+pkg";
    return GetPathEntryTypeFromBaseName(name);
  });
  RefuseEachRequest("CreateSearchTargetWithExtensionInFilenamePreferred", Masked, [](Subject&) {
    static const std::u16string name = u"a_rather_long_name_with_an_extension.vnx";
    return CreateSearchTargetWithExtensionInFilenamePreferred(name, kExtensions);
  });
  RefuseEachRequest("FindFirstFileVisibleOnPath", Concatenated, [](Subject& on) {
    return FindFirstFileVisibleOnPath(*on.path, detail::SearchTarget(kF, kExtensions), kPolicy);
  });
  RefuseEachRequest("FindFirstFileVisibleFromFolder", Concatenated, [](Subject& on) {
    return FindFirstFileVisibleFromFolder(*on.path, AbsoluteIRI(u"file:///b"), detail::SearchTarget(kF, kExtensions),
                                          kPolicy);
  });
  RefuseEachRequest("FindFirstFileVisibleFromFolder of storage", Concatenated, [](Subject& on) {
    const Folder folder(AbsoluteIRI(u"file:///b"), VornixStorageSystem::GetStorageSystemReference());
    return FindFirstFileVisibleFromFolder(*on.path, folder, detail::SearchTarget(kF, kExtensions), kPolicy);
  });
  RefuseEachRequest("FindFilesByExtensions of an entry", Concatenated,
                    [](Subject& on) { return FindFilesByExtensions(on.first, kExtensions, kPolicy); });
  RefuseEachRequest("FindFilesByExtensions", Concatenated,
                    [](Subject& on) { return FindFilesByExtensions(*on.path, VisibleScope, kExtensions, kPolicy); });
}

void RefuseToPartialPathnames() {
  static const std::vector<std::u16string> partial = {u"a", u"+pkg"};
  RefuseEachRequest("DoesPartialPathnameMatchPathEntryIRI", Concatenated,
                    [](Subject& on) { return DoesPartialPathnameMatchPathEntryIRI(partial, on.below, kPolicy); });
  RefuseEachRequest("DoesPartialPathnameMatchPathEntryIRI on a path", Concatenated, [](Subject& on) {
    return DoesPartialPathnameMatchPathEntryIRI(*on.path, partial, on.below, kPolicy);
  });
  RefuseEachRequest("DoesPartialPathnameStrictlyMatchPathString", Concatenated, [](Subject&) {
    static const std::u16string path = u"/a/+pkg";
    return DoesPartialPathnameStrictlyMatchPathString(partial, path, std::equal_to<>());
  });
  RefuseEachRequest("DoesPartialPathnameStrictlyMatchPathEntryIRI", Concatenated, [](Subject& on) {
    return DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, *on.below, kPolicy);
  });
}

void RefuseToPathTexts() {
  RefuseEachRequest("SplitVornixPath", Masked, [](Subject&) {
    static const std::u16string text = u"/a/rather/long/folder:/b:/another/rather/long/folder";
    return SplitVornixPath(text);
  });
  RefuseEachRequest("GetIRIFromString", Masked, [](Subject&) {
    static const std::u16string text = u"/a/rather/long folder";
    return GetIRIFromString(text);
  });
  RefuseEachRequest("GetStringFromIRI", Masked,
                    [](Subject&) { return GetStringFromIRI(AbsoluteIRI(u"file:///a/rather/long%20folder")); });
  RefuseEachRequest("GetCanonicalIRI", Masked,
                    [](Subject&) { return GetCanonicalIRI(AbsoluteIRI(u"file:///usr/lib")); });
  RefuseEachRequest("RemoveRootPathFromAbsolutePath", Masked, [](Subject&) {
    static const fl::filesystem::path path(u"/a/rather/long/folder");
    return RemoveRootPathFromAbsolutePath(path);
  });
}

/// The main path "a b", and whoever makes names absolute.
struct Edited {
  FakeMainPathManager manager{FoldersAt("a b")};
  FakeWorkingFolder folder{AbsoluteIRI(u"memory:///")};
  NiceMock<support::MockPathFactory> paths;
  NiceMock<support::MockPathEntryFactory> entries;
  PathPtr path = LeftPath();
};

std::unique_ptr<Edited> AMainPath() {
  auto edited = std::make_unique<Edited>();
  edited->folder.Reject(u"a_folder_that_is_missing", 4);
  return edited;
}

void RefuseToEdits() {
  static const std::vector<std::u16string> names = {u"c", u"a_folder_that_is_missing", u"a"};
  static const std::vector<AbsoluteIRI> folders = FoldersAt("c a");
  RefuseEachRequest(
      "ConvertUstringToAbsoluteIRI", AMainPath,
      [&](Edited& on) {
        foundation::core::except::Notification told;
        return ConvertUstringToAbsoluteIRI(names[0], on.folder, told);
      },
      Keeps::Something);
  RefuseEachRequest(
      "ConvertUstringRangeToAbsoluteIRIs", AMainPath,
      [&](Edited& on) {
        foundation::core::except::Notification told;
        return ConvertUstringRangeToAbsoluteIRIs(names, on.folder, told);
      },
      Keeps::Something);
  const auto askForAddition = [&](Edited& on) {
    static_cast<void>(AddFoldersToVornixPath(names, on.folder, on.manager, on.paths, on.entries, Position::Beginning));
    return on.manager.GetFolders();
  };
  RefuseEachRequest("AddFoldersToVornixPath", AMainPath, askForAddition, Keeps::Something);
  RefuseEachRequest(
      "AddIRIsToVornixPath", AMainPath,
      [&](Edited& on) {
        static_cast<void>(AddIRIsToVornixPath(folders, on.manager, Position::End));
        return on.manager.GetFolders();
      },
      Keeps::Something);
  RefuseEachRequest(
      "RemoveFoldersFromVornixPath", AMainPath,
      [&](Edited& on) {
        static_cast<void>(RemoveFoldersFromVornixPath(names, on.folder, on.manager, on.paths, *on.path));
        return on.manager.GetFolders();
      },
      Keeps::Something);
  RefuseEachRequest(
      "RemoveIRIsFromVornixPath", AMainPath,
      [&](Edited& on) {
        static_cast<void>(RemoveIRIsFromVornixPath(folders, on.manager));
        return on.manager.GetFolders();
      },
      Keeps::Something);
}

/// A folder of manifests.
struct Packages {
  MemoryStorage storage;
  std::unique_ptr<ManifestRegistry> registry;
};

std::unique_ptr<Packages> SomePackages() {
  auto packages = std::make_unique<Packages>();
  packages->storage.GetProvider().AddFile(u"/p/one.json",
                                          R"({"component": "one", "root": "one", "pathFolders": ["core"]})");
  packages->storage.WithFolders({u"/p/one/core"});
  packages->registry =
      std::make_unique<ManifestRegistry>(AbsoluteIRI(u"memory:///p"), VornixStorageSystem::GetStorageSystemReference());
  return packages;
}

/// A path that was read, so that a cache can be written.
struct ReadPath {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/m/f.vnx", u"/m/+pkg/g.vnx"}));
  PathEnvironment::FolderEntryFactory entries{VornixStorageSystem::GetStorageSystemReference()};
  PathPtr path = PathEnvironment::FolderPathFactory().CreateFolderPath(
      PathEnvironment::DistinctFolders({AbsoluteIRI(u"memory:///m")}, VornixStorageSystem::GetStorageSystemReference()),
      entries);
};

std::unique_ptr<ReadPath> AReadPath() { return std::make_unique<ReadPath>(); }

struct Notified {
  MemoryStorage storage;
  EventMgr manager;
  std::shared_ptr<EventMgr> session =
      foundation::msg_svc::eventmgr::createLocalEventMgr(foundation::msg_svc::eventmgr::SessionEmId);
};

void RefuseToNotifications() {
  const auto make = [] { return std::make_unique<Notified>(); };
  static const AbsoluteIRI changed(u"memory:///p/+pkg/@Cls");
  RefuseEachRequest(
      "NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon", make,
      [](Notified& on) {
        NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(changed);
        return on.session->dispatch() > 0;
      },
      Keeps::Something);
  RefuseEachRequest(
      "NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges", make,
      [](Notified& on) {
        NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(changed, on.manager);
        return on.session->dispatch() > 0;
      },
      Keeps::Something);
  RefuseEachRequest(
      "NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize", make,
      [](Notified& on) {
        NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(changed, on.manager);
        return on.session->dispatch() > 0;
      },
      Keeps::Something);
}

void RefuseToServices() {
  static const std::vector<ComponentIdentifier> components = {ComponentIdentifier(u"one")};
  RefuseEachRequest("GetPathFoldersForPackages", SomePackages,
                    [](Packages& on) { return GetPathFoldersForPackages(*on.registry, components); });
  static const AbsoluteIRI cache(u"memory:///cache");
  static const AbsoluteIRI root(u"memory:///");
  RefuseEachRequest(
      "WriteToolboxPathCache", AReadPath,
      [](ReadPath& on) {
        WriteToolboxPathCache(cache, root, on.entries);
        return true;
      },
      Keeps::Something);
  RefuseToNotifications();
}

void RefuseToComparisons() {
  RefuseEachRequest(
      "Compare", Concatenated,
      [](Subject& on) {
        PathEntryVectorDifferentiator differentiator;
        differentiator.Compare(*on.path->GetMainEntries(), {on.first}, ComparisonFilter::IncludeMethodEntries);
        return differentiator.GetRemoved();
      },
      Keeps::Something);
}

TEST(EveryExportedFunction, LetsTheExceptionPassAndAnswersRightAfterwardsWhicheverRequestForMemoryIsRefused) {
  for (auto* const make : {&Concatenated, &Deduplicated, &Masked}) RefuseToPath(make);
  RefuseToLookups();
  RefuseToPartialPathnames();
  RefuseToPathTexts();
  RefuseToEdits();
  RefuseToServices();
  RefuseToComparisons();
  if (HasFailure()) return;
  std::cout << "allocation failures: " << refusals << " points, 0 leaks, 0 lost exceptions\n";
  EXPECT_GE(refusals, 200U);
}

}  // namespace
}  // namespace Quorvex::PathManagement
