// Identifiers are told apart first, without storage. Then storage is asked where each of them leads, by several
// threads, and whoever leads where an earlier one does is dropped.

#include <boost/container_hash/hash.hpp>
#include <boost/unordered/unordered_flat_map.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/folder.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <utility>
#include <variant>

#include "parallel.hpp"
#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileIdentity;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;
using StorageException = foundation::storage::vfs::Exception;

namespace {

// Identities of different providers have nothing to do with each other.
struct ProvidersIdentity {
  std::shared_ptr<const IStorageProvider> provider;
  FileIdentity identity;

  friend bool operator==(const ProvidersIdentity&, const ProvidersIdentity&) = default;
  friend std::size_t hash_value(const ProvidersIdentity& place) {
    std::size_t seed = std::hash<FileIdentity>()(place.identity);
    boost::hash_combine(seed, place.provider.get());
    return seed;
  }
};

// Where a spelling leads: an identity, or a canonical location.
using PlaceInStorage = std::variant<ProvidersIdentity, AbsoluteIRI>;

struct HashOfPlace {
  std::size_t operator()(const PlaceInStorage& place) const {
    return std::visit([](const auto& kind) { return hash_value(kind); }, place);
  }
};

struct Answer {
  std::optional<PlaceInStorage> place;
  std::error_code error;
};

// What `ask` gives, or nothing when storage refuses; the first refusal is the answer's error.
template <class Ask>
void AskInto(Answer& answer, const Ask& ask) {
  try {
    answer.place = ask();
  } catch (const StorageException& exception) {
    if (!answer.error) answer.error = exception.GetError();
  }
}

bool IsNothingThere(const std::error_code& error) { return error == std::errc::no_such_file_or_directory; }

Answer Ask(const AbsoluteIRI& folder, const StorageSystemReference& storage, FolderQuestion question) {
  Answer answer;
  const auto ifListable = [&]() -> PlaceInStorage {
    const auto provider = storage.ProviderFor(folder);
    return ProvidersIdentity{provider, provider->CheckFolder(folder)};
  };
  const auto identity = [&]() -> PlaceInStorage {
    const auto provider = storage.ProviderFor(folder);
    return ProvidersIdentity{provider, provider->Stat(folder).identity};
  };
  const auto canonicalLocation = [&]() -> PlaceInStorage {
    return foundation::storage::vfs::Folder(folder, storage).getCanonicalLocation().getAbsoluteIRI();
  };
  if (question == FolderQuestion::CanItBeListed) AskInto(answer, ifListable);
  if (!answer.place && !IsNothingThere(answer.error)) AskInto(answer, identity);
  if (!answer.place) AskInto(answer, canonicalLocation);
  return answer;
}

std::u16string TextOf(const AbsoluteIRI& location) {
  try {
    return PathManagement::GetStringFromIRI(location);
  } catch (const StorageException&) {
    return location.toString();  // no text can express it
  }
}

const char* InWords(SameFolder reason) {
  switch (reason) {
    case SameFolder::ByText:
      return "same identifier";
    case SameFolder::ByIdentity:
      return "same device and inode";
    case SameFolder::ByCanonicalLocation:
      return "same canonical location";
  }
  return "unknown reason";
}

}  // namespace

std::string ReasonOf(const DroppedFolder& folder) {
  return "it is the same folder as " + QuotedName(TextOf(folder.staying)) + ", folder " +
         std::to_string(folder.stayingPosition + 1) + " of the path: " + InWords(folder.reason);
}

class DistinctFolders::State {
 public:
  State(const std::vector<AbsoluteIRI>& folders, std::optional<StorageSystemReference> storage, FolderQuestion question)
      : storage_(std::move(storage)) {
    const std::vector<std::size_t> firsts = FirstsByText(folders);
    std::vector<Answer> answers(firsts.size());
    if (storage_) {
      InParallel(firsts.size(), [&](std::size_t i) { answers[i] = Ask(folders[firsts[i]], *storage_, question); });
    }
    Settle(folders, firsts, answers);
  }

  [[nodiscard]] std::optional<std::size_t> IndexOf(const AbsoluteIRI& folder) const {
    if (const auto known = spellings_.find(folder); known != spellings_.end()) return known->second.kept;
    if (!storage_) return std::nullopt;
    const Answer answer = Ask(folder, *storage_, FolderQuestion::WhatIsThere);
    const auto known = answer.place ? places_.find(*answer.place) : places_.end();
    return known == places_.end() ? std::nullopt : std::make_optional(known->second);
  }

  std::vector<KeptFolder> kept;
  std::vector<DroppedFolder> dropped;

 private:
  // What became of a spelling.
  struct Spelling {
    std::size_t kept = 0;
    SameFolder reason = SameFolder::ByText;
  };

  // The position at which each identifier stands first.
  std::vector<std::size_t> FirstsByText(const std::vector<AbsoluteIRI>& folders) {
    std::vector<std::size_t> firsts;
    for (std::size_t position = 0; position < folders.size(); ++position) {
      if (spellings_.try_emplace(folders[position]).second) firsts.push_back(position);
    }
    return firsts;
  }

  void Settle(const std::vector<AbsoluteIRI>& folders, const std::vector<std::size_t>& firsts,
              const std::vector<Answer>& answers) {
    std::size_t first = 0;
    for (std::size_t position = 0; position < folders.size(); ++position) {
      const AbsoluteIRI& folder = folders[position];
      Spelling& spelling = spellings_.find(folder)->second;
      if (first < firsts.size() && firsts[first] == position) {
        const Answer& answer = answers[first++];
        spelling = WhatBecomesOf(answer);
        if (spelling.kept == kept.size()) {
          kept.push_back({folder, position, answer.error});
          continue;
        }
      }
      const KeptFolder& staying = kept[spelling.kept];
      dropped.push_back({folder, position, staying.location, staying.position, spelling.reason});
    }
  }

  // Of a spelling that is met for the first time: it leads where an earlier one does, or is the next to be kept.
  Spelling WhatBecomesOf(const Answer& answer) {
    const Spelling next{kept.size(), SameFolder::ByText};
    if (!answer.place) return next;
    const auto [place, isNew] = places_.try_emplace(*answer.place, kept.size());
    if (isNew) return next;
    const bool hasIdentity = std::holds_alternative<ProvidersIdentity>(place->first);
    return {place->second, hasIdentity ? SameFolder::ByIdentity : SameFolder::ByCanonicalLocation};
  }

  std::optional<StorageSystemReference> storage_;
  // Of all that are on the list.
  boost::unordered_flat_map<AbsoluteIRI, Spelling> spellings_;
  // Of the kept folders, as far as storage told.
  boost::unordered_flat_map<PlaceInStorage, std::size_t, HashOfPlace> places_;
};

DistinctFolders::DistinctFolders(const std::vector<AbsoluteIRI>& folders)
    : state_(std::make_shared<const State>(folders, std::nullopt, FolderQuestion::WhatIsThere)) {}

DistinctFolders::DistinctFolders(const std::vector<AbsoluteIRI>& folders, const StorageSystemReference& storage,
                                 FolderQuestion question)
    : state_(std::make_shared<const State>(folders, storage, question)) {}

DistinctFolders::DistinctFolders(const DistinctFolders&) noexcept = default;
DistinctFolders& DistinctFolders::operator=(const DistinctFolders&) noexcept = default;
DistinctFolders::~DistinctFolders() = default;

const std::vector<KeptFolder>& DistinctFolders::GetKept() const noexcept { return state_->kept; }
const std::vector<DroppedFolder>& DistinctFolders::GetDropped() const noexcept { return state_->dropped; }

std::optional<std::size_t> DistinctFolders::IndexOf(const AbsoluteIRI& folder) const { return state_->IndexOf(folder); }

}  // namespace Quorvex::PathEnvironment
