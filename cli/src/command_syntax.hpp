// How commands are typed: what their options are, what they need, and what their help says.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command_line.hpp"

namespace vornixpath {

/// The arguments of a command that are no options. CLI11 takes a positional apart at commas and reads on after "--", so
/// they are collected here instead.
class Positionals {
 public:
  /// Throws UsageError for an option that `command` does not have.
  Positionals(const CLI::App& command, const std::vector<std::string>& afterDoubleDash);

  /// Throw UsageError, calling what is missing by `name`.
  [[nodiscard]] std::vector<std::string> AtLeastOne(const std::string& name) const;
  [[nodiscard]] std::string ExactlyOne(const std::string& name) const;
  [[nodiscard]] std::pair<std::string, std::string> ExactlyTwo(const std::string& first,
                                                               const std::string& second) const;
  /// Throws UsageError when there is one.
  void RequireNone() const;
  [[nodiscard]] bool IsEmpty() const noexcept { return texts_.empty(); }

 private:
  std::vector<std::string> texts_;
};

/// A command of the command line. Once that is parsed, `complete` gives what it asks for, or throws UsageError.
struct CommandSyntax {
  const CLI::App* parser;
  std::function<Command(const Positionals&)> complete;
};

// query_syntax.cpp
CommandSyntax AddWhich(CLI::App& app);
CommandSyntax AddWhy(CLI::App& app);
CommandSyntax AddMatch(CLI::App& app);
CommandSyntax AddFiles(CLI::App& app);
CommandSyntax AddPath(CLI::App& app);

// packages_syntax.cpp
CommandSyntax AddPackages(CLI::App& app);
void AddPackagesOption(CLI::App& command, PathOptions& path);
/// Throws UsageError.
void RefuseImpossiblePackages(const PathOptions& path);

// shadows_syntax.cpp
CommandSyntax AddShadows(CLI::App& app);

// doctor_syntax.cpp
CommandSyntax AddDoctor(CLI::App& app);

// report_syntax.cpp
CommandSyntax AddReport(CLI::App& app);

// snapshot_syntax.cpp
CommandSyntax AddSnapshot(CLI::App& app);
CommandSyntax AddCompare(CLI::App& app);

// cache_syntax.cpp
CommandSyntax AddCache(CLI::App& app);
CommandSyntax AddStatus(CLI::App& app);

// watch_syntax.cpp
CommandSyntax AddWatch(CLI::App& app);

// editing_syntax.cpp
CommandSyntax AddAdd(CLI::App& app);
CommandSyntax AddRemove(CLI::App& app);
CommandSyntax AddUndo(CLI::App& app);
CommandSyntax AddLog(CLI::App& app);

// text_syntax.cpp
CommandSyntax AddSplit(CLI::App& app);
CommandSyntax AddIri(CLI::App& app);

// What they are made of.

/// A command whose usage line shows `positionals`, labels with a space between. As with an option's argument, a label
/// says what may stand there: one of several words (`a|b`, as OneOf gives it), a FILE, a FOLDER, or a text of some
/// kind.
CLI::App& AddCommand(CLI::App& app, const std::string& name, const std::string& positionals,
                     const std::string& description);
/// What AddCommand was told.
[[nodiscard]] std::string PositionalsOf(const CLI::App& command);
void AddNulFlag(CLI::App& command, OutputForm& form);
void AddJsonFlag(CLI::App& command, bool& json);
void AddSessionOption(CLI::App& command, std::optional<std::string>& session);
void AddMaskOption(CLI::App& command, PathOptions& path);

// query_options.cpp
/// --path and --path-file alone.
void AddFolderOptions(CLI::App& command, PathOptions& path);
/// The same and --session.
void AddPathOptions(CLI::App& command, PathOptions& path);
void AddSnapshotOption(CLI::App& command, PathOptions& path);
void AddCacheFileOption(CLI::App& command, PathOptions& path);
/// The same and --cache.
void AddCacheOptions(CLI::App& command, PathOptions& path);
/// `hint` ends the description.
void AddExtensionOption(CLI::App& command, std::string& extensions, const std::string& hint = "");
void AddUnreadableIsFailureFlag(CLI::App& command, bool& strict);

/// Throw UsageError.
void RefuseTwoForms(bool json, OutputForm form);
void RefuseEmptySession(const std::optional<std::string>& session);
void RefuseImpossiblePath(const PathOptions& path);

/// `bytes` as people are shown them.
[[nodiscard]] std::string Displayed(const std::string& bytes);

}  // namespace vornixpath
