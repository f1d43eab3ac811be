// A transcript of the command line, kept as a text that reads like a terminal session:
//
//     # What it shows.
//     tree
//       toolbox/greet.vnx        a file
//       toolbox/empty/           a folder
//       link -> toolbox          a link
//
//     $ vornixpath which greet --path toolbox
//     ROOT/toolbox/greet.vnx     a line of standard output
//     ! vornixpath: ...          a line of standard error
//     = 0                        the exit status, which ends the command
//
// Commands are run by sh in the tree's root, one after another, with a HOME and an XDG_STATE_HOME of their own, both
// missing at first. In the output, the root's path stands as ROOT, that of XDG_STATE_HOME as STATE, and that of the
// example toolbox as TOOLBOX, which commands find in the variable TOOLBOX; a point in time stands as TIME, and the size
// of a cache, which depends on where the root is, as SIZE.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace transcripts {

struct Step {
  std::string command;
  std::string expected;  ///< the lines below the command, status line included
};

struct Transcript {
  std::vector<std::string> tree;
  std::vector<Step> steps;
};

/// Throws std::runtime_error with the line for a text that is no transcript.
[[nodiscard]] Transcript ReadTranscript(const std::filesystem::path& file);

void MakeTree(const std::vector<std::string>& tree, const std::filesystem::path& root);

/// Runs `command` in `root` and returns what it printed, in the form of `Step::expected`.
[[nodiscard]] std::string RunCommand(const std::string& command, const std::filesystem::path& root);

}  // namespace transcripts
