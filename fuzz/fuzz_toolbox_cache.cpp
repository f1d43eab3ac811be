// A toolbox cache from any bytes: it answers or is refused, whatever its numbers say. The checksums and the size are
// put right, or nothing would get past them. The input is the header, and then what follows the header's page:
//
//     (head -c 264 toolbox.cache; tail -c +4097 toolbox.cache) >seed
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "cache_layout.hpp"
#include "cache_seal.hpp"
#include "require.hpp"

namespace {

namespace cache = Quorvex::PathEnvironment::cache;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::CachedPath;
using Quorvex::PathEnvironment::CacheTrust;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntryFactory;
using Quorvex::PathManagement::VisibleScope;
using Quorvex::PathManagement::detail::SearchTarget;

template <class Asked>
void AnswerOrRefuse(const Asked& ask) {
  try {
    ask();
  } catch (const ToolboxCacheError& error) {
    Require(error.what()[0] != '\0');
  }
}

std::string FileFrom(std::string_view input) {
  cache::Header header{};
  const std::string_view ofHeader = input.substr(0, sizeof(header));
  std::memcpy(&header, ofHeader.data(), ofHeader.size());
  header.magic = cache::kMagic;
  header.version = cache::kVersion;
  header.byteOrder = cache::kByteOrder;

  std::string file(cache::kPageSize, '\0');
  file += input.substr(ofHeader.size());
  file.resize((file.size() + cache::kAlignment - 1) / cache::kAlignment * cache::kAlignment);
  cache::Seal(file, header);
  return file;
}

void AskPath(const CachedPath& path) {
  static const std::vector<std::u16string> kExtensions = {u".vnx", u""};
  for (const std::u16string name : {u"greet", u"Shape", u"pkg/name", u"inner", u"a.b"}) {
    const SearchTarget target(name, kExtensions);
    for (const auto policy : {FilenameMatchingPolicy::CaseSensitive, FilenameMatchingPolicy::Native}) {
      AnswerOrRefuse([&] {
        const auto found = path.FindFirstInScope(VisibleScope, target, policy);
        if (found) Require(path.IsEntryOnPath(*found->GetPathEntry()));
      });
      AnswerOrRefuse([&] {
        for (const auto& entry : path.GetMethodEntriesByName(VisibleScope, name, policy)) {
          Require(!path.FirstEntryIsBeforeSecondOnPath(*entry, *entry));
        }
      });
      AnswerOrRefuse([&] { static_cast<void>(FindFirstFileVisibleOnPath(path, target, policy)); });
    }
  }
  AnswerOrRefuse([&] { static_cast<void>(path.GetProblems()); });
  AnswerOrRefuse([&] {
    const auto whole = path.GetWhole();
    static_cast<void>(whole->GetProblems());
    path.ForEachEntry(VisibleScope, [&](const auto& entry) {
      Require(whole->IsEntryOnPath(*entry));
      return false;
    });
  });
}

std::shared_ptr<const FolderPath> NeverReadAnew(const IPathEntryFactory& /*entries*/) { std::abort(); }

void Ask(const ToolboxCache& cache) {
  static const std::vector<std::u16string> kExtensions = {u".vnx"};
  const std::u16string name = u"greet";
  AnswerOrRefuse([&] { static_cast<void>(cache.HoldsListFrom("the list")); });
  AnswerOrRefuse([&] { static_cast<void>(cache.HoldsList({AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///b")})); });
  std::size_t deciding = cache.CountFolders();
  AnswerOrRefuse([&] { deciding = CachedPath::CountDeciding(cache, SearchTarget(name, kExtensions)); });
  for (const std::size_t count : {deciding, cache.CountFolders()}) {
    AnswerOrRefuse([&] {
      if (const auto path = CachedPath::Make(cache, count, NeverReadAnew)) AskPath(*path);
    });
  }
  AnswerOrRefuse([&] { static_cast<void>(cache.GetMainEntries()); });
  AnswerOrRefuse([&] { cache.Check(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto storage = std::make_shared<MemoryStorageProvider>();
  static const auto mount = VornixStorageSystem::Mount(u"memory", storage);
  storage->AddFile(u"/cache", FileFrom({reinterpret_cast<const char*>(data), size}));
  AnswerOrRefuse([] {
    Ask(ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(), AbsoluteIRI(u"memory:///cache"),
                           CacheTrust::Blind));
  });
  return 0;
}
