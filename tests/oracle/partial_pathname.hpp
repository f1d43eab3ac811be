#pragma once

// What a partial pathname matches, word for word and by recursion: slow, obvious, and written apart from the library.

#include <functional>
#include <search_path_interfaces/constants.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::oracle {

using Components = std::vector<std::u16string>;
using Comparison = std::function<bool(const std::u16string&, const std::u16string&)>;

/// The names between the separators of `text`.
inline Components ComponentsOf(const std::u16string& text) {
  Components components(1);
  for (const char16_t unit : text) {
    if (Constants::PathnameSeparatorStr.find(unit) != std::u16string::npos) {
      components.emplace_back();
    } else {
      components.back() += unit;
    }
  }
  std::erase(components, u"");
  return components;
}

inline bool AreSameLeniently(const std::u16string& wanted, const std::u16string& folder, const Comparison& areSame) {
  if (areSame(wanted, folder)) return true;
  if (folder.starts_with(u'@') || folder.starts_with(u'+')) return areSame(wanted, folder.substr(1));
  return false;
}

/// Whether no package stands at the end of `folder`, where class, private and resources folders do not count.
inline bool EndsOutsideAPackage(Components folder) {
  if (folder.empty()) return true;
  const std::u16string last = folder.back();
  folder.pop_back();
  if (last.starts_with(u'+')) return false;
  if (last.starts_with(u'@') || last == u"private" || last == u"resources") return EndsOutsideAPackage(folder);
  return true;
}

inline bool DoesPartialPathnameMatch(Components partial, Components folder, const Comparison& areSame) {
  if (partial.empty()) return EndsOutsideAPackage(folder);
  if (folder.empty()) return false;
  if (!AreSameLeniently(partial.back(), folder.back(), areSame)) return false;
  partial.pop_back();
  folder.pop_back();
  return DoesPartialPathnameMatch(partial, folder, areSame);
}

}  // namespace Quorvex::PathManagement::oracle
