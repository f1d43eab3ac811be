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

inline bool AreSameStrictly(const std::u16string& wanted, const std::u16string& folder, const Comparison& areSame) {
  if (folder.starts_with(u'+')) return wanted == folder;
  if (folder.starts_with(u'@') && wanted.starts_with(u'@')) return wanted == folder;
  if (folder.starts_with(u'@')) return u"@" + wanted == folder;
  if (folder == u"private") return wanted == u"private";
  return areSame(wanted, folder);
}

inline bool IsPlain(const std::u16string& name) {
  return !name.starts_with(u'+') && !name.starts_with(u'@') && name != u"private" && name != u"resources";
}

inline bool DoesPartialPathnameStrictlyMatch(Components partial, Components folder, const Comparison& areSame) {
  if (partial.empty()) return folder.empty() || IsPlain(folder.back());
  if (folder.empty()) return false;
  if (!AreSameStrictly(partial.back(), folder.back(), areSame)) return false;
  partial.pop_back();
  folder.pop_back();
  return DoesPartialPathnameStrictlyMatch(partial, folder, areSame);
}

/// Whether `folder` ends in `partial`; folders are the first operand of a comparison.
inline bool EndsIn(Components folder, Components partial, const Comparison& areSame) {
  if (partial.empty()) return true;
  if (folder.empty()) return false;
  if (!areSame(folder.back(), partial.back())) return false;
  folder.pop_back();
  partial.pop_back();
  return EndsIn(folder, partial, areSame);
}

/// `methodFolders` are the names below the main entry, whose own place is `mainFolder`. A folder of the list is a
/// package entry when it bears its mark; a main entry never is one.
inline bool DoesPartialPathnameMatchAlong(Components methodFolders, const Components& mainFolder, Components partial,
                                          const Comparison& areSame) {
  if (partial.empty()) {
    for (const auto& name : methodFolders) {
      if (name.starts_with(u'+')) return false;
    }
    return true;
  }
  if (methodFolders.empty()) {
    if (!AreSameLeniently(partial.back(), mainFolder.empty() ? u"" : mainFolder.back(), areSame)) return false;
    return EndsIn(mainFolder, partial, areSame);
  }
  if (!AreSameLeniently(partial.back(), methodFolders.back(), areSame)) return false;
  partial.pop_back();
  methodFolders.pop_back();
  return DoesPartialPathnameMatchAlong(methodFolders, mainFolder, partial, areSame);
}

}  // namespace Quorvex::PathManagement::oracle
