#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <filesystem>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/ofstream.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <search_path_utilities/path_editing.hpp>
#include <search_path_utilities/services.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <support/in_child.hpp>
#include <support/mock_factories.hpp>
#include <support/storage_matchers.hpp>
#include <support/temporary_folder.hpp>
#include <support/without_privileges.hpp>
#include <thread>
#include <typeindex>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using foundation::core::except::IInternalException;
using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::ForwardingStorageProvider;
using foundation::storage::fakes::IStorageObserver;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::MountHandle;
using foundation::storage::vfs::VornixStorageSystem;
using support::MockPathEntryFactory;
using support::TemporaryFolder;
using testing::_;
using testing::AllOf;
using testing::ElementsAre;
using testing::Property;
using testing::Ref;
using testing::ResultOf;
using testing::StrEq;
using testing::StrictMock;
using testing::Throws;

/// Writes what a test says.
class WritingFactory final : public IPathEntryFactory {
 public:
  using Write = std::function<void(std::ostream&)>;
  explicit WritingFactory(Write write) : write_(std::move(write)) {}

  [[nodiscard]] std::shared_ptr<const IPathEntry> CreateMainEntry(const AbsoluteIRI& /*folder*/) const override {
    throw std::logic_error("saving a cache makes no entries");
  }
  void WriteToolboxCache(std::ostream& out, const AbsoluteIRI& /*toolboxRoot*/) const override { write_(out); }

 private:
  Write write_;
};

/// Lets a test see each call to storage before it is made, or throw in place of it.
class StorageWatch final : public IStorageObserver {
 public:
  using Watch = std::function<void(StorageOperation)>;
  explicit StorageWatch(Watch watch) : watch_(std::move(watch)) {}

  void BeforeCall(StorageOperation operation, const AbsoluteIRI& /*location*/) override { watch_(operation); }

 private:
  Watch watch_;
};

/// What another part of the platform throws: as close to storage's own exception as can be.
class AnotherPartsException : public foundation::core::except::Exception<IInternalException, std::exception> {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "another part failed"; }
};

/// A callable that throws an `Expected` itself, and not what is derived from it to attach another exception.
template <class Expected>
auto ThrowsExactly(const std::string& text) {
  const auto typeOf = [](const Expected& thrown) { return std::type_index(typeid(thrown)); };
  return Throws<Expected>(
      AllOf(ResultOf(typeOf, std::type_index(typeid(Expected))), Property("what", &Expected::what, StrEq(text))));
}

const auto cannotBeSaved = ThrowsExactly<UnableToSaveToolboxCacheException>(std::exception().what());

TEST(UnableToSaveToolboxCacheException, IsAnInternalExceptionOfThePlatform) {
  EXPECT_TRUE((std::is_base_of_v<foundation::core::except::Exception<IInternalException, std::exception>,
                                 UnableToSaveToolboxCacheException>));
  EXPECT_THROW(throw UnableToSaveToolboxCacheException(), IInternalException);
  EXPECT_THROW(throw UnableToSaveToolboxCacheException(), std::exception);
}

TEST(UnableToSaveToolboxCacheException, CarriesNoTextAndNoOtherException) {
  EXPECT_STREQ(UnableToSaveToolboxCacheException().what(), std::exception().what());
  EXPECT_FALSE((std::is_base_of_v<std::nested_exception, UnableToSaveToolboxCacheException>));
}

TEST(UnableToSaveToolboxCacheException, IsMadeAndCopiedWithoutFailing) {
  EXPECT_TRUE(std::is_nothrow_default_constructible_v<UnableToSaveToolboxCacheException>);
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<UnableToSaveToolboxCacheException>);
  EXPECT_TRUE(std::is_nothrow_copy_assignable_v<UnableToSaveToolboxCacheException>);
}

/// A cache file in memory, under a scheme of its own, whose storage can fail.
class ToolboxPathCache : public testing::Test {
 protected:
  void Save(const WritingFactory::Write& write) const { WriteToolboxPathCache(file_, root_, WritingFactory(write)); }
  void Fail(StorageOperation operation, std::errc error = std::errc::no_space_on_device, std::size_t call = 1) {
    storage_->Plan({.operation = operation,
                    .call = call,
                    .error = std::make_error_code(error),
                    .persistence = Persistence::Persistent});
  }
  [[nodiscard]] MountHandle Watch(const StorageWatch::Watch& watch) const {
    const auto watched = std::make_shared<ForwardingStorageProvider>(memory_, std::make_shared<StorageWatch>(watch));
    return VornixStorageSystem::Mount(u"cachetest", watched);
  }
  /// Whatever `operation` throws that is not storage's own exception reaches who saves `write`, as it is.
  void ExpectPassedOn(StorageOperation operation, const WritingFactory::Write& write) const {
    const auto saveWhile = [&](const std::function<void()>& fail) {
      return [&, fail] {
        const MountHandle mount = Watch([&](StorageOperation called) {
          if (called == operation) fail();
        });
        Save(write);
      };
    };
    EXPECT_THAT(saveWhile([] { throw AnotherPartsException(); }),
                ThrowsExactly<AnotherPartsException>("another part failed"));
    EXPECT_THAT(saveWhile([] { throw std::logic_error("a mistake"); }), ThrowsExactly<std::logic_error>("a mistake"));
    EXPECT_THAT(saveWhile([] { throw std::bad_alloc(); }), ThrowsExactly<std::bad_alloc>(std::bad_alloc().what()));
    EXPECT_THAT(saveWhile([] { throw 42; }), Throws<int>(42));
  }
  /// Nothing when there is no file.
  [[nodiscard]] std::optional<std::string> Content() const {
    if (memory_->List(AbsoluteIRI(u"cachetest:///")).entries.empty()) return std::nullopt;
    const auto bytes = memory_->Map(file_);
    return std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  }

  const AbsoluteIRI file_{u"cachetest:///cache"};
  const AbsoluteIRI root_{u"file:///toolbox"};
  std::shared_ptr<MemoryStorageProvider> memory_ = std::make_shared<MemoryStorageProvider>();
  std::shared_ptr<FailingStorageProvider> storage_ = std::make_shared<FailingStorageProvider>(memory_);
  MountHandle mount_ = VornixStorageSystem::Mount(u"cachetest", storage_);
};

TEST_F(ToolboxPathCache, HoldsWhatTheFactoryWrites) {
  Save([](std::ostream& out) { out << "records\n" << 42; });
  EXPECT_EQ(Content(), "records\n42");
}

TEST_F(ToolboxPathCache, IsEmptyWhenTheFactoryWritesNothing) {
  Save([](std::ostream&) {});
  EXPECT_EQ(Content(), "");
}

TEST_F(ToolboxPathCache, ReplacesAnOlderAndLongerOne) {
  memory_->AddFile(u"/cache", "an older and longer cache");
  Save([](std::ostream& out) { out << "new"; });
  EXPECT_EQ(Content(), "new");
}

TEST_F(ToolboxPathCache, IsWrittenByTheFactoryAloneForTheRootThatIsGiven) {
  StrictMock<MockPathEntryFactory> factory;
  EXPECT_CALL(factory, WriteToolboxCache(_, Ref(root_)));
  WriteToolboxPathCache(file_, root_, factory);
}

TEST_F(ToolboxPathCache, ComesToTheFactoryAsAFilesStreamThatThrowsEveryError) {
  Save([](std::ostream& out) {
    const auto& stream = dynamic_cast<foundation::storage::vfs::ofstream&>(out);
    EXPECT_TRUE(stream.is_open());
    EXPECT_EQ(stream.exceptions(), std::ios_base::badbit | std::ios_base::failbit);
  });
}

TEST_F(ToolboxPathCache, IsWrittenOnTheCallersThread) {
  const auto caller = std::this_thread::get_id();
  std::vector<std::thread::id> threads;
  const auto note = [&] { threads.push_back(std::this_thread::get_id()); };
  const MountHandle mount = Watch([&](StorageOperation) { note(); });

  Save([&](std::ostream& out) {
    note();
    out << "records";
  });

  EXPECT_THAT(threads, ElementsAre(caller, caller, caller, caller)) << "opened, asked for, written, closed";
}

TEST_F(ToolboxPathCache, IsWrittenThroughAnAlias) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"cachealias", u"cachetest");
  WriteToolboxPathCache(AbsoluteIRI(u"cachealias:///cache"), root_, WritingFactory([](auto& out) { out << "there"; }));
  EXPECT_EQ(Content(), "there");
}

TEST_F(ToolboxPathCache, CannotBeSavedWhenItsFileCannotBeOpened) {
  memory_->AddFile(u"/cache", "old");
  Fail(StorageOperation::OpenForWriting, std::errc::permission_denied);
  const StrictMock<MockPathEntryFactory> factory;

  EXPECT_THAT([&] { WriteToolboxPathCache(file_, root_, factory); }, cannotBeSaved);

  EXPECT_EQ(Content(), "old");
  EXPECT_EQ(storage_->GetFailureCount(), 1U) << "the file is not touched further";
}

TEST_F(ToolboxPathCache, CannotBeSavedInAFolderThatDoesNotExist) {
  const AbsoluteIRI file(u"cachetest:///nofolder/cache");
  const StrictMock<MockPathEntryFactory> factory;

  EXPECT_THAT([&] { WriteToolboxPathCache(file, root_, factory); }, cannotBeSaved);

  EXPECT_EQ(Content(), std::nullopt);
}

TEST_F(ToolboxPathCache, CannotBeSavedInPlaceOfAFolder) {
  EXPECT_THAT([&] { WriteToolboxPathCache(AbsoluteIRI(u"cachetest:///"), root_, MockPathEntryFactory()); },
              cannotBeSaved);
}

TEST_F(ToolboxPathCache, CannotBeSavedUnderASchemeThatNothingServes) {
  EXPECT_THAT([&] { WriteToolboxPathCache(AbsoluteIRI(u"nowhere-mounted:///c"), root_, MockPathEntryFactory()); },
              cannotBeSaved);
}

TEST_F(ToolboxPathCache, PassesOnWhatIsNotStoragesOwnExceptionFromOpeningAndStaysAsItIs) {
  memory_->AddFile(u"/cache", "old");
  ExpectPassedOn(StorageOperation::OpenForWriting, [](std::ostream&) { FAIL() << "the factory was asked"; });
  EXPECT_EQ(Content(), "old");
}

TEST_F(ToolboxPathCache, IsGoneWhenTheFactoryThrowsAfterWritingAPart) {
  EXPECT_THAT(
      [&] {
        Save([](std::ostream& out) {
          out << "a part" << std::flush;
          throw std::runtime_error("no more");
        });
      },
      cannotBeSaved);
  EXPECT_EQ(Content(), std::nullopt);
}

TEST_F(ToolboxPathCache, IsGoneWhenTheFactoryThrowsAfterWritingAPartThatIsNotYetInTheFile) {
  EXPECT_THAT(
      [&] {
        Save([](std::ostream& out) {
          out << "a part";
          throw std::runtime_error("no more");
        });
      },
      cannotBeSaved);
  EXPECT_EQ(Content(), std::nullopt);
}

TEST_F(ToolboxPathCache, IsGoneTogetherWithTheOlderOneThatItWasToReplace) {
  memory_->AddFile(u"/cache", "old");
  EXPECT_THAT([&] { Save([](std::ostream&) { throw std::runtime_error("no more"); }); }, cannotBeSaved);
  EXPECT_EQ(Content(), std::nullopt);
}

TEST_F(ToolboxPathCache, CannotBeSavedWhateverTheFactoryThrows) {
  EXPECT_THAT([&] { Save([](std::ostream&) { throw 42; }); }, cannotBeSaved);
  EXPECT_THAT([&] { Save([](std::ostream&) { throw std::bad_alloc(); }); }, cannotBeSaved);
  EXPECT_THAT([&] { Save([](std::ostream&) { throw UnableToSaveToolboxCacheException(); }); }, cannotBeSaved);
  EXPECT_THAT([&] { Save([](std::ostream& out) { out.setstate(std::ios_base::failbit); }); }, cannotBeSaved);
  EXPECT_THAT(
      [&] { Save([&](std::ostream&) { throw Exception("read", file_, std::make_error_code(std::errc::io_error)); }); },
      cannotBeSaved);
  EXPECT_EQ(Content(), std::nullopt);
}

TEST_F(ToolboxPathCache, IsSavedWhenTheFactoryKeepsAnErrorToItself) {
  Fail(StorageOperation::Write);
  EXPECT_NO_THROW(Save([](std::ostream& out) {
    try {
      out << "lost" << std::flush;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetError(), std::errc::no_space_on_device);
    }
  }));
  EXPECT_EQ(Content(), "");
}

TEST_F(ToolboxPathCache, IsGoneWhereverTheDiskIsFullWhileItIsWritten) {
  const auto writeAll = [](std::ostream& out) {
    for (int record = 0; record < 1000; ++record) out << std::string(100, 'x') << '\n';
    out << std::flush;
  };
  const auto counting = std::make_shared<CountingStorageProvider>(memory_);
  {
    const MountHandle mount = VornixStorageSystem::Mount(u"cachetest", counting);
    Save(writeAll);
  }
  const std::size_t writes = counting->GetCount(StorageOperation::Write);
  ASSERT_GT(writes, 3U);

  for (std::size_t call = 1; call <= writes; ++call) {
    for (const Persistence persistence : {Persistence::Transient, Persistence::Persistent}) {
      storage_->Clear();
      storage_->Plan({.operation = StorageOperation::Write,
                      .call = call,
                      .error = std::make_error_code(std::errc::no_space_on_device),
                      .persistence = persistence});
      memory_->AddFile(u"/cache", "old");

      EXPECT_THAT([&] { Save(writeAll); }, cannotBeSaved) << "write " << call;
      EXPECT_EQ(Content(), std::nullopt) << "write " << call;
    }
  }
}

TEST_F(ToolboxPathCache, TakesNoNoticeWhenTheLastCloseFails) {
  Fail(StorageOperation::Close, std::errc::io_error);
  EXPECT_NO_THROW(Save([](std::ostream& out) { out << "written"; }));
  EXPECT_EQ(Content(), "written");
  EXPECT_EQ(storage_->GetFailureCount(), 1U);
}

TEST_F(ToolboxPathCache, TakesNoNoticeWhenTheLastBytesCannotBeWrittenInClosing) {
  Fail(StorageOperation::Write);
  EXPECT_NO_THROW(Save([](std::ostream& out) { out << "never flushed"; }));
  EXPECT_EQ(Content(), "");
  EXPECT_EQ(storage_->GetFailureCount(), 1U);
}

TEST_F(ToolboxPathCache, IsNotFlushedBeforeItIsClosed) {
  const auto counting = std::make_shared<CountingStorageProvider>(memory_);
  const MountHandle mount = VornixStorageSystem::Mount(u"cachetest", counting);

  Save([](std::ostream& out) { out << "written"; });

  EXPECT_EQ(counting->GetCount(StorageOperation::Flush), 0U);
  EXPECT_EQ(counting->GetCount(StorageOperation::Close), 1U);
}

TEST_F(ToolboxPathCache, PassesOnWhyItCannotBeClosedInTheCleanUpAndStays) {
  Fail(StorageOperation::Close, std::errc::io_error);
  EXPECT_THAT([&] { Save([](std::ostream&) { throw std::runtime_error("no more"); }); },
              FailsWith(std::errc::io_error));
  EXPECT_EQ(Content(), "");
}

TEST_F(ToolboxPathCache, PassesOnWhyItsLastBytesCannotBeWrittenInTheCleanUpAndStays) {
  Fail(StorageOperation::Write);
  EXPECT_THAT(
      [&] {
        Save([](std::ostream& out) {
          out << "not yet in the file";
          throw std::runtime_error("no more");
        });
      },
      FailsWith(std::errc::no_space_on_device));
  EXPECT_EQ(Content(), "");
}

TEST_F(ToolboxPathCache, PassesOnWhyItCannotBeRemovedInTheCleanUp) {
  Fail(StorageOperation::Remove, std::errc::read_only_file_system);
  EXPECT_THAT([&] { Save([](std::ostream&) { throw std::runtime_error("no more"); }); },
              FailsWith(std::errc::read_only_file_system));
  EXPECT_EQ(Content(), "");
}

TEST_F(ToolboxPathCache, PassesOnWhatIsNotStoragesOwnExceptionInTheCleanUpAndStays) {
  for (const StorageOperation operation : {StorageOperation::Close, StorageOperation::Remove}) {
    ExpectPassedOn(operation, [](std::ostream&) { throw std::runtime_error("no more"); });
    EXPECT_EQ(Content(), "");
  }
}

TEST_F(ToolboxPathCache, PassesOnThatSomebodyElseRemovedIt) {
  EXPECT_THAT(
      [&] {
        Save([&](std::ostream&) {
          memory_->Remove(file_);
          throw std::runtime_error("no more");
        });
      },
      FailsWith(std::errc::no_such_file_or_directory));
}

/// A cache file on the disk.
class ToolboxPathCacheOnDisk : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path Path() const { return folder_.GetPath() / "cache"; }
  [[nodiscard]] AbsoluteIRI File() const { return GetIRIFromString(Path().u16string()); }
  [[nodiscard]] static std::string ContentOf(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
  }
  [[nodiscard]] std::string Content() const { return ContentOf(Path()); }
  void Save(const WritingFactory::Write& write) const {
    WriteToolboxPathCache(File(), AbsoluteIRI(u"file:///toolbox"), WritingFactory(write));
  }
  [[nodiscard]] bool IsRefused(const WritingFactory::Write& write) const {
    try {
      Save(write);
      return false;
    } catch (const UnableToSaveToolboxCacheException&) {
      return true;
    }
  }

  TemporaryFolder folder_;
};

TEST_F(ToolboxPathCacheOnDisk, ReplacesAnOlderAndLongerOne) {
  std::ofstream(Path()) << "an older and longer cache";
  Save([](std::ostream& out) { out << "new"; });
  EXPECT_EQ(Content(), "new");
}

TEST_F(ToolboxPathCacheOnDisk, HasNothingBesideItOnceItIsSaved) {
  Save([](std::ostream& out) { out << "records"; });

  const std::filesystem::directory_iterator entries(folder_.GetPath());
  EXPECT_THAT(std::vector<std::filesystem::path>(begin(entries), end(entries)), ElementsAre(Path()));
}

TEST_F(ToolboxPathCacheOnDisk, CannotBeSavedInAFolderThatCannotBeWritten) {
  std::filesystem::permissions(folder_.GetPath(), std::filesystem::perms(0555));
  support::WithoutPrivileges([&] { EXPECT_TRUE(IsRefused([](std::ostream& out) { out << "new"; })); });
  std::filesystem::permissions(folder_.GetPath(), std::filesystem::perms(0755));
  EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(ToolboxPathCacheOnDisk, LosesTheLinkThatItIsNamedByAndNotWhatThatLeadsTo) {
  const std::filesystem::path target = folder_.GetPath() / "target";
  std::ofstream(target) << "an older and longer cache";
  std::filesystem::create_symlink(target, Path());

  EXPECT_TRUE(IsRefused([](std::ostream& out) {
    out << "a part";
    throw std::runtime_error("no more");
  }));

  EXPECT_FALSE(std::filesystem::is_symlink(Path()));
  EXPECT_EQ(ContentOf(target), "a part");
}

TEST_F(ToolboxPathCacheOnDisk, StaysAsItIsWhereItCannotBeWritten) {
  std::ofstream(Path()) << "old";
  std::filesystem::permissions(Path(), std::filesystem::perms(0444));
  support::WithoutPrivileges([&] { EXPECT_TRUE(IsRefused([](std::ostream& out) { out << "new"; })); });
  EXPECT_EQ(Content(), "old");
}

TEST_F(ToolboxPathCacheOnDisk, IsGoneWhenItGrowsBeyondWhatTheSystemAllows) {
  const int outcome = support::InChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {40'000, 40'000};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    return IsRefused([](std::ostream& out) { out << std::string(100'000, 'x'); }) ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
  EXPECT_FALSE(std::filesystem::exists(Path()));
}

}  // namespace
}  // namespace Quorvex::PathManagement
