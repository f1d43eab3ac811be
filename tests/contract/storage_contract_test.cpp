#include "storage_contract.hpp"

#include <unistd.h>

#include <cerrno>
#include <fakes/counting_storage_provider.hpp>
#include <fakes/forwarding_storage_provider.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <support/temporary_folder.hpp>

namespace foundation::storage::vfs::contract {
namespace {

template <NameComparison Comparison>
class InMemory final : public StorageUnderTest {
 public:
  InMemory() { provider_.AddFolder(u"/tested"); }

  [[nodiscard]] const IStorageProvider& GetProvider() const override { return provider_; }
  [[nodiscard]] AbsoluteIRI GetFolder() const override { return AbsoluteIRI(u"memory:///tested"); }
  void AddLink(const std::u16string& name, const std::u16string& target) override {
    provider_.AddLink(u"/tested/" + name, target);
  }

 private:
  MemoryStorageProvider provider_{Comparison};
};

class OnDisk final : public StorageUnderTest {
 public:
  [[nodiscard]] const IStorageProvider& GetProvider() const override { return provider_; }
  [[nodiscard]] AbsoluteIRI GetFolder() const override {
    return toAbsoluteIRI(u"file", fl::filesystem::path(fl::filesystem::from_bytes(folder_.GetPath().string())));
  }
  void AddLink(const std::u16string& name, const std::u16string& target) override {
    const std::string link = (folder_.GetPath() / fl::filesystem::to_bytes(name)).string();
    if (::symlink(fl::filesystem::to_bytes(target).c_str(), link.c_str()) == -1) {
      throw std::system_error(errno, std::generic_category(), link);
    }
  }

 private:
  Quorvex::PathManagement::support::TemporaryFolder folder_;
  FileStorageProvider provider_;
};

/// The storage of `Inner` as seen through `Fake`.
template <class Fake, class Inner>
class Through final : public StorageUnderTest {
 public:
  [[nodiscard]] const IStorageProvider& GetProvider() const override { return provider_; }
  [[nodiscard]] AbsoluteIRI GetFolder() const override { return inner_.GetFolder(); }
  void AddLink(const std::u16string& name, const std::u16string& target) override { inner_.AddLink(name, target); }

 private:
  Inner inner_;
  // Shares nothing with `inner_`, which lives as long.
  Fake provider_{std::shared_ptr<const IStorageProvider>(std::shared_ptr<void>(), &inner_.GetProvider())};
};

template <class Kind>
auto Only() {
  return testing::Values(StorageMaker{[] { return std::make_unique<Kind>(); }});
}

using CasefulMemory = InMemory<NameComparison::Exact>;
using CaselessMemory = InMemory<NameComparison::IgnoreCase>;

INSTANTIATE_TEST_SUITE_P(Memory, StorageContract, Only<CasefulMemory>());
INSTANTIATE_TEST_SUITE_P(CaselessMemory, StorageContract, Only<CaselessMemory>());
INSTANTIATE_TEST_SUITE_P(Disk, StorageContract, Only<OnDisk>());
INSTANTIATE_TEST_SUITE_P(ForwardedMemory, StorageContract,
                         (Only<Through<fakes::ForwardingStorageProvider, CasefulMemory>>()));
INSTANTIATE_TEST_SUITE_P(ObservedDisk, StorageContract, (Only<Through<fakes::CountingStorageProvider, OnDisk>>()));

}  // namespace
}  // namespace foundation::storage::vfs::contract
