#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "exit_status.hpp"
#include "shadow_grade.hpp"

namespace vornixpath {

// All texts are bytes, as the system handed them over.

/// Of program files, separated by commas.
inline constexpr const char* kUsualExtensions = ".vnx";

/// How results are written.
enum class OutputForm {
  Lines,         ///< one a line, nothing in it that a terminal would act on
  NulTerminated  ///< exact bytes, each result ended by a NUL
};

/// What part a toolbox cache has in an answer.
enum class CacheUse {
  Auto,    ///< what is proven to be still so is taken from it
  Off,     ///< none
  Require  ///< all is taken from it, as it was when it was written
};

/// Where the folders of the path come from: at most one of the first four. Without any, the environment variable
/// VORNIX_PATH, or else the default session.
struct PathOptions {
  std::optional<std::string> snapshot;  ///< the file of one, with what the folders held
  std::optional<std::string> text;
  std::optional<std::string> file;
  std::optional<std::string> session;
  std::vector<std::string> masks;  ///< folders to be taken for absent
  CacheUse cache = CacheUse::Auto;
  std::optional<std::string> cacheFile;  ///< else the usual one
  std::optional<std::string> packages;   ///< a folder of manifests; their packages' folders come after the path
};

struct WhichOptions {
  std::vector<std::string> names;
  PathOptions path;
  std::optional<std::string> from;
  std::string extensions = kUsualExtensions;  ///< separated by commas, each with or without its dot
  bool all = false;
  bool ignoreCase = false;
  bool strict = false;
  bool json = false;
  OutputForm form = OutputForm::Lines;
};

struct WhyOptions {
  std::string name;
  PathOptions path;
  std::optional<std::string> from;
  std::string extensions = kUsualExtensions;  ///< as for `which`
  bool ignoreCase = false;
  bool strict = false;
  bool json = false;
};

struct MatchOptions {
  std::string partial;
  PathOptions path;
  bool ignoreCase = false;
  bool strict = false;  ///< match strictly; it has nothing to do with folders that could not be read
  bool json = false;
  OutputForm form = OutputForm::Lines;
};

struct FilesOptions {
  std::vector<std::string> extensions;  ///< each may list several, as for `which`
  PathOptions path;
  std::string scope = "visible";  ///< one of the names in scope_name.hpp
  bool ignoreCase = false;
  bool strict = false;
  bool json = false;
  OutputForm form = OutputForm::Lines;
};

struct ShadowsOptions {
  PathOptions path;
  std::string extensions = kUsualExtensions;  ///< as for `which`
  std::optional<ShadowGrade> failOn;
  std::optional<std::string> baseline;
  std::optional<std::string> newBaseline;
  bool strict = false;
  bool json = false;
};

struct DoctorOptions {
  PathOptions path;
  std::string extensions = kUsualExtensions;  ///< as for `which`
  std::optional<int> minScore;                ///< from 0 to 100; a lower score is "no"
  bool strict = false;
  bool json = false;
};

/// A page about a path.
struct ReportOptions {
  std::string file;
  PathOptions path;                           ///< without a cache: each folder is read, and how long that takes is told
  std::string extensions = kUsualExtensions;  ///< as for `which`
  bool strict = false;
};

struct PathListOptions {
  PathOptions path;
  bool onlyDistinct = false;  ///< without the later spellings of a folder
  bool json = false;
  OutputForm form = OutputForm::Lines;
};

/// What the packages of a folder of manifests put on the path.
struct PackagesOptions {
  std::string folder;
  bool strict = false;
  bool json = false;
};

enum class CacheDeed { Write, Status, Verify, Clear };

struct CacheOptions {
  CacheDeed deed = CacheDeed::Status;
  PathOptions path;                 ///< of Clear, the cache's file alone
  std::optional<std::string> root;  ///< for Write: else the deepest folder around all of the path
  bool json = false;
};

struct StatusOptions {
  PathOptions path;
  bool json = false;
};

struct SnapshotOptions {
  std::string file;
  PathOptions path;
  bool strict = false;
};

struct CompareOptions {
  std::string before;                         ///< as compared_side.hpp says
  std::string after;                          ///< likewise
  PathOptions path;                           ///< for the side "now"; its session and snapshot are never set
  std::optional<std::string> session;         ///< for the side "saved"
  std::string extensions = kUsualExtensions;  ///< as for `which`
  bool isDeep = false;
  bool tellsEffects = false;
  bool strict = false;
  bool json = false;
};

struct WatchOptions {
  PathOptions path;                                                  ///< its snapshot and masks are never set
  std::string extensions = kUsualExtensions;                         ///< as for `which`
  std::chrono::milliseconds pollInterval = std::chrono::seconds(2);  ///< zero is never
  bool json = false;
};

/// A change of the session's path, in the default place unless `session` names its file.
struct EditOptions {
  std::vector<std::string> folders;
  std::optional<std::string> session;
  bool isDryRun = false;
};

struct AddOptions {
  EditOptions edit;
  bool atEnd = false;
};

struct RemoveOptions {
  EditOptions edit;
};

struct UndoOptions {
  std::optional<std::string> session;
};

struct LogOptions {
  std::optional<std::string> session;
  bool json = false;
};

struct SplitOptions {
  std::string text;
  OutputForm form = OutputForm::Lines;
};

struct IriOptions {
  std::string text;
  bool back = false;
  OutputForm form = OutputForm::Lines;
};

using Command =
    std::variant<WhichOptions, WhyOptions, MatchOptions, FilesOptions, ShadowsOptions, PathListOptions, PackagesOptions,
                 SnapshotOptions, CompareOptions, WatchOptions, AddOptions, RemoveOptions, UndoOptions, LogOptions,
                 SplitOptions, IriOptions, CacheOptions, StatusOptions, DoctorOptions, ReportOptions>;

/// What the arguments, without the program's name, ask for; or the status to end with at once, help or the version
/// having been written to standard output. Throws UsageError. What follows the first "--" is taken as it is.
[[nodiscard]] std::variant<Command, ExitStatus> ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace vornixpath
