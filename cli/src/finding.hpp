// What `doctor` tells: things on a path that are wrong, or not as people may expect.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <optional>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "folder_numbers.hpp"
#include "shadow_grade.hpp"

namespace vornixpath {

/// How much a finding matters, most first.
enum class Severity : std::uint8_t {
  Error,    ///< answers are wrong or missing
  Warning,  ///< answers may surprise
  Note      ///< answers are right; something could be tidier
};

inline constexpr std::array<std::string_view, 3> kSeverityNames = {"error", "warning", "note"};

[[nodiscard]] constexpr std::string_view NameOf(Severity severity) {
  return kSeverityNames[static_cast<std::size_t>(severity)];
}

enum class FindingKind : std::uint8_t {
  MissingFolder,
  UnreadableFolder,
  LoopingFolder,
  RepeatedFolder,
  EmptyFolder,
  SpreadPackage,
  SpreadClass,
  ShadowedName,
  LetterCaseTwins,
  ForbiddenName
};

inline constexpr std::array<std::string_view, 10> kFindingKindNames = {
    "missing-folder", "unreadable-folder", "looping-folder", "repeated-folder",   "empty-folder",
    "spread-package", "spread-class",      "shadowed-name",  "letter-case-twins", "forbidden-name"};

[[nodiscard]] constexpr std::string_view NameOf(FindingKind kind) {
  return kFindingKindNames[static_cast<std::size_t>(kind)];
}

/// A file or folder, and the number of its folder of the path, from 1.
struct FindingPlace {
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;

  friend bool operator==(const FindingPlace&, const FindingPlace&) = default;
};

/// What a person can do, in words, and a line to type where one does it. Both safe for a terminal.
struct Fix {
  std::string sentence;
  std::optional<std::string> command = std::nullopt;

  friend bool operator==(const Fix&, const Fix&) = default;
};

struct Finding {
  FindingKind kind;
  Severity severity;
  std::string sentence;              ///< safe for a terminal; the places are told beside it
  std::vector<FindingPlace> places;  ///< at least one, the one that counts first
  Fix fix;
  std::optional<std::u16string> name = std::nullopt;  ///< what people type, where a name is concerned
  std::optional<ShadowGrade> grade = std::nullopt;    ///< of a shadowed name
};

/// A path that is looked at. What it refers to must outlive it.
struct ExaminedPath {
  const Quorvex::PathManagement::IPath& path;
  const FolderNumbers& numbers;
  std::vector<std::u16string> extensions;  ///< of the files that take part in lookups
};

}  // namespace vornixpath
