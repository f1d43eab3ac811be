#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fakes/counting_storage_provider.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <memory>
#include <new>
#include <search_path_utilities/services.hpp>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <string>
#include <support/allocations.hpp>
#include <support/storage_matchers.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using foundation::msg_svc::eventmgr::createLocalEventMgr;
using foundation::msg_svc::eventmgr::Event;
using foundation::msg_svc::eventmgr::EventConnection;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::msg_svc::eventmgr::SessionEmId;
using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::MountHandle;
using foundation::storage::vfs::VornixStorageSystem;
using storage::filefolderobserver::FileFolderChangedEvent;
using storage::filefolderobserver::FrozenInclusion;
using support::Allocations;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

/// Hears what is posted to a manager.
class Listener {
 public:
  explicit Listener(EventMgr& manager) : manager_(manager) {}

  /// The paths announced since the last call.
  Texts Hear() {
    paths_.clear();
    manager_.dispatch();
    return paths_;
  }
  [[nodiscard]] const std::vector<FrozenInclusion>& GetInclusions() const { return inclusions_; }

 private:
  void Take(const Event& event) {
    const auto& change = dynamic_cast<const FileFolderChangedEvent&>(event);
    paths_.push_back(fl::filesystem::to_displayed_text(change.getPath()));
    inclusions_.push_back(change.getFrozenInclusion());
  }

  EventMgr& manager_;
  Texts paths_;
  std::vector<FrozenInclusion> inclusions_;
  EventConnection connection_ = manager_.connect([this](const auto& event) { Take(*event); });
};

class ChangeNotification : public testing::Test {
 protected:
  Texts AnnouncedFor(const std::u16string& changed) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI(changed));
    return session_.Hear();
  }
  Texts AnnouncedForResolved(const std::u16string& changed) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(AbsoluteIRI(changed), given_);
    return session_.Hear();
  }
  Texts AnnouncedForCanonical(const std::u16string& changed) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(AbsoluteIRI(changed), given_);
    return session_.Hear();
  }

  /// Whatever request for memory fails: what had been posted before stays, and nothing else comes.
  void ExpectTheFirstOnesWhenMemoryEnds(const std::function<void()>& notify) {
    notify();
    const Texts all = session_.Hear();
    std::size_t partial = 0;
    for (std::size_t successes = 0;; ++successes) {
      bool isAll = false;
      try {
        const Allocations allocations(successes);
        notify();
        isAll = true;
      } catch (const std::bad_alloc&) {
        isAll = false;
      }
      const Texts heard = session_.Hear();
      if (isAll) {
        EXPECT_EQ(heard, all);
        break;
      }
      ASSERT_LT(heard.size(), all.size());
      EXPECT_EQ(heard, Texts(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(heard.size())));
      if (!heard.empty()) ++partial;
    }
    EXPECT_GT(partial, 0U);
  }

  EventMgr given_;
  Listener session_{*createLocalEventMgr(SessionEmId)};
};

TEST_F(ChangeNotification, AnnouncesAFileInAPlainFolderAndTheFolder) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/greet.vnx"), ElementsAre("file:///tb/greet.vnx", "file:///tb"));
}

TEST_F(ChangeNotification, AnnouncesAFileInAPrivateFolderThatFolderAndThePlainOne) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/private/helper.vnx"),
              ElementsAre("file:///tb/private/helper.vnx", "file:///tb/private", "file:///tb"));
}

TEST_F(ChangeNotification, AnnouncesAFileInAResourcesFolderThatFolderAndThePlainOne) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/resources/labels.vnx"),
              ElementsAre("file:///tb/resources/labels.vnx", "file:///tb/resources", "file:///tb"));
}

TEST_F(ChangeNotification, AnnouncesEverySpecialFolderInnermostFirst) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/+pkg/@cls/private/notes.txt"),
              ElementsAre("file:///tb/+pkg/@cls/private/notes.txt", "file:///tb/+pkg/@cls/private",
                          "file:///tb/+pkg/@cls", "file:///tb/+pkg", "file:///tb"));
}

TEST_F(ChangeNotification, AnnouncesAPackageFolderAndItsPlainParent) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/+pkg"), ElementsAre("file:///tb/+pkg", "file:///tb"));
}

TEST_F(ChangeNotification, AnnouncesAPlainFolderAlone) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb"), ElementsAre("file:///tb"));
}

TEST_F(ChangeNotification, StopsAtTheFirstPlainFolder) {
  EXPECT_THAT(AnnouncedFor(u"file:///+outer/tb/@cls"), ElementsAre("file:///+outer/tb/@cls", "file:///+outer/tb"));
}

TEST_F(ChangeNotification, TakesAFolderWithADotInItsNameForAFile) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/data.old"), ElementsAre("file:///tb/data.old", "file:///tb"));
}

TEST_F(ChangeNotification, TakesASpecialFolderWithADotInItsNameForAFileAsWell) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/+a/+b.old"),
              ElementsAre("file:///tb/+a/+b.old", "file:///tb/+a", "file:///tb"));
}

TEST_F(ChangeNotification, TakesANameThatBeginsWithADotForAFile) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/private/.hidden"),
              ElementsAre("file:///tb/private/.hidden", "file:///tb/private", "file:///tb"));
}

TEST_F(ChangeNotification, TakesANameThatEndsInADotForAFile) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/odd."), ElementsAre("file:///tb/odd.", "file:///tb"));
}

TEST_F(ChangeNotification, LooksForADotInTheChangedNameOnly) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb.d/data.old/f.vnx"),
              ElementsAre("file:///tb.d/data.old/f.vnx", "file:///tb.d/data.old"));
  EXPECT_THAT(AnnouncedFor(u"file:///tb/+a.b/private"),
              ElementsAre("file:///tb/+a.b/private", "file:///tb/+a.b", "file:///tb"));
}

TEST_F(ChangeNotification, TakesAFileWithoutADotForAPlainFolder) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/private/README"), ElementsAre("file:///tb/private/README"));
}

TEST_F(ChangeNotification, TellsSpecialFoldersByNameAndLetterCase) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/Private"), ElementsAre("file:///tb/Private"));
  EXPECT_THAT(AnnouncedFor(u"file:///tb/privates"), ElementsAre("file:///tb/privates"));
}

TEST_F(ChangeNotification, StopsAtTheRoot) {
  EXPECT_THAT(AnnouncedFor(u"file:///"), ElementsAre("file:///"));
  EXPECT_THAT(AnnouncedFor(u"file:///@cls"), ElementsAre("file:///@cls", "file:///"));
  EXPECT_THAT(AnnouncedFor(u"file:///f.vnx"), ElementsAre("file:///f.vnx", "file:///"));
}

TEST_F(ChangeNotification, StopsWhereARelativeIdentifierEnds) {
  EXPECT_THAT(AnnouncedFor(u"file:private/f.vnx"), ElementsAre("file:private/f.vnx", "file:private", "file:"));
}

TEST_F(ChangeNotification, DoesNotTakeADotInAHostForOneInAName) {
  EXPECT_THAT(AnnouncedFor(u"store://host.example/"), ElementsAre("store://host.example/"));
}

TEST_F(ChangeNotification, CarriesTheWholeIdentifierAsItsTextIs) {
  EXPECT_THAT(AnnouncedFor(u"file:///tb/100%25 a.vnx"), ElementsAre("file:///tb/100%25 a.vnx", "file:///tb"));
}

TEST_F(ChangeNotification, IncludesNothingFrozen) {
  AnnouncedFor(u"file:///tb/private/helper.vnx");
  EXPECT_THAT(session_.GetInclusions(),
              ElementsAre(FrozenInclusion::None, FrozenInclusion::None, FrozenInclusion::None));
}

TEST_F(ChangeNotification, QueuesAndDeliversNothingItself) {
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI(u"file:///tb"));

  EXPECT_THAT(session_.GetInclusions(), IsEmpty());
  EXPECT_EQ(createLocalEventMgr(SessionEmId)->dispatch(), 1U);
}

TEST_F(ChangeNotification, AnnouncesEachCallAnew) {
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI(u"file:///tb/@a"));
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI(u"file:///tb/@a"));

  EXPECT_THAT(session_.Hear(), ElementsAre("file:///tb/@a", "file:///tb", "file:///tb/@a", "file:///tb"));
}

TEST_F(ChangeNotification, PostsNothingToTheManagerItIsGiven) {
  Listener given(given_);

  EXPECT_THAT(AnnouncedForResolved(u"file:///tb"), ElementsAre("file:///tb"));
  EXPECT_THAT(AnnouncedForCanonical(u"file:///"), ElementsAre("file:///"));

  EXPECT_THAT(given.Hear(), IsEmpty());
}

TEST_F(ChangeNotification, PostsEachEventOnceWhenItIsGivenTheSessionsOwnManager) {
  const auto session = createLocalEventMgr(SessionEmId);

  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(AbsoluteIRI(u"file:///tb/@a"), *session);
  EXPECT_THAT(session_.Hear(), ElementsAre("file:///tb/@a", "file:///tb"));

  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(AbsoluteIRI(u"file:///"), *session);
  EXPECT_THAT(session_.Hear(), ElementsAre("file:///"));
}

TEST_F(ChangeNotification, LeavesPostedWhatWasPostedBeforeAFailure) {
  const AbsoluteIRI changed(u"file:///tb/+pkg/@cls/private/notes.txt");
  ExpectTheFirstOnesWhenMemoryEnds([&] { NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(changed); });
}

/// A tree in memory under a scheme of its own, with the alias `ram`.
class ChangeNotificationInStorage : public ChangeNotification {
 protected:
  ChangeNotificationInStorage() {
    memory_->AddFile(u"/real/private/f.vnx");
    memory_->AddLink(u"/link", u"/real");
  }

  std::shared_ptr<MemoryStorageProvider> memory_ = std::make_shared<MemoryStorageProvider>();
  std::shared_ptr<CountingStorageProvider> storage_ = std::make_shared<CountingStorageProvider>(memory_);
  MountHandle mount_ = VornixStorageSystem::Mount(u"memory", storage_);
  MountHandle alias_ = VornixStorageSystem::MountAlias(u"ram", u"memory");
};

TEST_F(ChangeNotificationInStorage, LeavesAnIdentifierAsItIsInTheCommonForm) {
  EXPECT_THAT(AnnouncedFor(u"ram:///link/@c"), ElementsAre("ram:///link/@c", "ram:///link"));
  EXPECT_EQ(storage_->GetCount(), 0U);
}

TEST_F(ChangeNotificationInStorage, ResolvesAnAliasWithoutAskingStorage) {
  EXPECT_THAT(AnnouncedForResolved(u"ram:///link/@c"), ElementsAre("memory:///link/@c", "memory:///link"));
  EXPECT_EQ(storage_->GetCount(), 0U);
}

TEST_F(ChangeNotificationInStorage, AnnouncesWhatDoesNotExist) {
  EXPECT_THAT(AnnouncedForResolved(u"memory:///gone/@c"), ElementsAre("memory:///gone/@c", "memory:///gone"));
}

TEST_F(ChangeNotificationInStorage, AsksStorageOnceWhenItCanonicalizes) {
  AnnouncedForCanonical(u"memory:///link/private/f.vnx");

  EXPECT_EQ(storage_->GetCount(StorageOperation::CanonicalLocation), 1U);
  EXPECT_EQ(storage_->GetCount(), 1U);
}

TEST_F(ChangeNotificationInStorage, LeavesPostedWhatWasPostedBeforeAFailure) {
  const AbsoluteIRI changed(u"ram:///link/private/f.vnx");
  ExpectTheFirstOnesWhenMemoryEnds(
      [&] { NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(changed, given_); });
  ExpectTheFirstOnesWhenMemoryEnds(
      [&] { NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(changed, given_); });
}

TEST_F(ChangeNotificationInStorage, FollowsLinksWhenItCanonicalizes) {
  EXPECT_THAT(AnnouncedForCanonical(u"memory:///link/private/f.vnx"),
              ElementsAre("memory:///real/private/f.vnx", "memory:///real/private", "memory:///real"));
}

TEST_F(ChangeNotificationInStorage, FollowsAnAliasWhenItCanonicalizes) {
  EXPECT_THAT(AnnouncedForCanonical(u"ram:///link/private"), ElementsAre("memory:///real/private", "memory:///real"));
}

TEST_F(ChangeNotificationInStorage, AnnouncesWhatHasBeenDeletedWhereItWas) {
  EXPECT_THAT(AnnouncedForCanonical(u"memory:///link/@gone/g.vnx"),
              ElementsAre("memory:///real/@gone/g.vnx", "memory:///real/@gone", "memory:///real"));
}

TEST_F(ChangeNotificationInStorage, AnnouncesTheTargetOfALinkAndNotTheLink) {
  memory_->AddFolder(u"/plain");
  memory_->AddLink(u"/tb/@cls", u"/plain");

  EXPECT_THAT(AnnouncedForCanonical(u"memory:///tb/@cls"), ElementsAre("memory:///plain"));
}

TEST_F(ChangeNotificationInStorage, AnnouncesNothingWhenALocationCannotBeMadeCanonical) {
  memory_->AddLink(u"/loop", u"/loop");

  EXPECT_THAT([this] { AnnouncedForCanonical(u"memory:///loop"); },
              FailsWith(std::errc::too_many_symbolic_link_levels));
  EXPECT_THROW(AnnouncedForCanonical(u"nowhere-mounted:///a"), Exception);

  EXPECT_THAT(session_.Hear(), IsEmpty());
}

TEST_F(ChangeNotificationInStorage, TakesASchemeThatNothingServesUnlessItCanonicalizes) {
  EXPECT_THAT(AnnouncedForResolved(u"nowhere-mounted:///a.x"),
              ElementsAre("nowhere-mounted:///a.x", "nowhere-mounted:///"));
}

}  // namespace
}  // namespace Quorvex::PathManagement
