#include "help_topics.hpp"

#include <algorithm>
#include <iterator>

#include "joined_names.hpp"

namespace vornixpath {

namespace {

struct HelpTopic {
  std::string_view name;
  std::string_view text;
};

constexpr HelpTopic kTopics[] = {
    {"environment", R"(VORNIX_PATH      The folders to search, as for --path, when a command says
                 nothing of the path. Empty counts for unset.
XDG_STATE_HOME   The default session's path is kept in vornixpath/path below it;
                 without it, below $HOME/.local/state.
XDG_CACHE_HOME   The cache is kept in vornixpath/toolbox.cache below it; without
                 it, below $HOME/.cache.

A variable of the last two that is no absolute path counts for nothing.
)"},
    {"exit-status", R"(0  Yes: all names found, something matches, the same, edited.
1  No: one was not found, nothing matches, different, refused with warnings.
2  Wrong usage: the command line says nothing that can be done.
3  Answered, but something could not be read: only under --strict, and a
   warning otherwise.
4  Could not work: something outside the command line was in the way.
)"},
    {"folders", R"(Which folders are searched is taken from the first of these that is there:

  --path FOLDERS    split at every ':' and ';'
  --path-file FILE  one folder a line, exactly as it stands; relative ones are
                    taken against the file's own folder. Here a folder may have
                    ':' in its name, or be an identifier
  --session FILE    a path that 'vornixpath add' keeps
  --snapshot FILE   what 'vornixpath snapshot' wrote: the answer is that of then
  VORNIX_PATH       as for --path
  the default session's path, if one was saved

Two of the options together are wrong usage. --packages DIR adds the folders of
the packages whose manifests are in DIR; --mask FOLDER answers as though FOLDER
were absent. 'vornixpath status' tells where the path comes from.
)"},
    {"names", R"(NAME is the name of a file with its extension or without. Without, .vnx is
tried, or what --ext says, in order. The first folder of the path that has the
file decides, and in one folder the first extension.

A folder of the path may hold special folders, and these take part:

  +name      a package: its files are called name/file
  @Name      a class: Name means @Name/Name.vnx, and comes before a plain file
             Name.vnx unless that stands in an earlier folder
  private    seen only from the folder around it: which NAME --from FOLDER
  resources  never seen by a name

A NAME with folders in it (geometry/area) is looked for only in folders that
these match.
'vornixpath why NAME' tells the steps.
)"},
    {"output", R"(Results go to standard output, one a line, in constant order; messages go to
standard error.

Nothing that a terminal would act on is written raw: such characters appear as
\u{1B} or \xFF, and a backslash as \\. For programs there are exact forms:

  -0      each result as it is, ended by a NUL
  --json  one document, with 'path', as shown, and 'iri', exact
)"}};

}  // namespace

std::optional<std::string_view> HelpAbout(std::string_view topic) {
  const auto* const found = std::find_if(std::begin(kTopics), std::end(kTopics),
                                         [topic](const HelpTopic& each) { return each.name == topic; });
  if (found == std::end(kTopics)) return std::nullopt;
  return found->text;
}

std::vector<std::string_view> HelpTopicNames() {
  std::vector<std::string_view> names;
  for (const HelpTopic& topic : kTopics) names.push_back(topic.name);
  return names;
}

std::string HelpTopics() { return JoinedNames(HelpTopicNames(), ", ", ", "); }

}  // namespace vornixpath
