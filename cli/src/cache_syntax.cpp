// The commands about the cache, and about the state of all that is kept.

#include <algorithm>
#include <array>
#include <ranges>
#include <string_view>
#include <utility>

#include "command_syntax.hpp"
#include "joined_names.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

constexpr std::array<std::pair<std::string_view, CacheDeed>, 4> kDeeds = {{{"write", CacheDeed::Write},
                                                                           {"status", CacheDeed::Status},
                                                                           {"verify", CacheDeed::Verify},
                                                                           {"clear", CacheDeed::Clear}}};

CacheDeed DeedNamed(const std::string& name) {
  const auto* const deed =
      std::find_if(kDeeds.begin(), kDeeds.end(), [&](const auto& each) { return each.first == name; });
  if (deed != kDeeds.end()) return deed->second;
  throw UsageError("DEED is " + JoinedNames(kDeeds | std::views::keys, ", ", " or ") + ", not \"" + Displayed(name) +
                   '"');
}

void RefuseIdleOptions(const CacheOptions& options) {
  if (options.root && options.deed != CacheDeed::Write) throw UsageError("--root is for 'cache write'");
  if (options.root && options.root->empty()) throw UsageError("the FOLDER of --root is empty");
  const bool isOfFile = options.deed == CacheDeed::Clear || options.deed == CacheDeed::Verify;
  const bool namesPath = options.path.text || options.path.file || options.path.session;
  if (isOfFile && namesPath) throw UsageError("'cache verify' and 'cache clear' are about the file, not about a path");
}

}  // namespace

CommandSyntax AddCache(CLI::App& app) {
  const auto options = std::make_shared<CacheOptions>();
  CLI::App& command = AddCommand(app, "cache", OneOf(kDeeds | std::views::keys),
                                 "Keep what the folders of the path hold, so that queries start at once");
  AddPathOptions(command, options->path);
  AddCacheFileOption(command, options->path);
  command
      .add_option("--root", options->root,
                  "Keep the folders at or below FOLDER alone; else all\n"
                  "of the path's")
      ->type_name("FOLDER");
  AddJsonFlag(command, options->json);
  command.footer(
      "  write   Read the folders of the path and put what they hold into the cache, in the place of what it held\n"
      "  status  Tell what the cache holds, whether a query of the path would use it, and which folders it would read\n"
      "          all the same\n"
      "  verify  Read every byte of the cache, and every folder it holds, and compare\n"
      "  clear   Remove the cache\n"
      "A cache makes no answer wrong: what is taken from it is proven first, see --cache of the queries.\n"
      "Exit status: 0 written, would be used, whole, removed; 1 would not be used, wrong, was not there;\n"
      "2 wrong usage, 4 could not work.\n\n"
      "  vornixpath cache write\n"
      "  vornixpath which greet --cache require");
  return {&command, [options](const Positionals& positionals) {
            options->deed = DeedNamed(positionals.ExactlyOne("DEED"));
            RefuseImpossiblePath(options->path);
            RefuseIdleOptions(*options);
            return *options;
          }};
}

CommandSyntax AddStatus(CLI::App& app) {
  const auto options = std::make_shared<StatusOptions>();
  CLI::App& command =
      AddCommand(app, "status", "", "Tell where the path comes from, how its folders are, and what part the cache has");
  AddPathOptions(command, options->path);
  AddCacheOptions(command, options->path);
  AddJsonFlag(command, options->json);
  command.footer(
      "Exit status: 0 every folder is present, 1 some are not, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath status --path ~/toolbox:~/more");
  return {&command, [options](const Positionals& positionals) {
            positionals.RequireNone();
            RefuseImpossiblePath(options->path);
            return *options;
          }};
}

}  // namespace vornixpath
