#include "unread_files.hpp"

#include <set>
#include <string>

#include "output.hpp"

namespace vornixpath {

namespace {

// In the order of the pairs.
std::vector<std::string> ReasonsOf(const std::vector<ShadowPair>& pairs) {
  std::set<std::string> known;
  std::vector<std::string> reasons;
  for (const ShadowPair& pair : pairs) {
    for (const GradedShadow& graded : pair.shadows) {
      if (!graded.unread.empty() && known.insert(graded.unread).second) reasons.push_back(graded.unread);
    }
  }
  return reasons;
}

}  // namespace

bool IsAnyUnread(const std::vector<ShadowPair>& pairs) { return !ReasonsOf(pairs).empty(); }

bool WarnOfUnreadFiles(const std::vector<ShadowPair>& pairs) {
  const std::vector<std::string> reasons = ReasonsOf(pairs);
  for (const std::string& reason : reasons) WriteWarning(reason);
  return !reasons.empty();
}

}  // namespace vornixpath
