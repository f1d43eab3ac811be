#pragma once

// Large components with folders drawn from few places, so that much is repeated.

#include <string>
#include <support/random_source.hpp>
#include <vector>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// Whether a folder holds the same wherever it appears, as real folders do, or something else each time.
enum class Contents { Settled, Changing };

inline support::Folder RandomFolder(support::RandomSource& random, Contents contents) {
  const std::size_t number = random.Below(25);
  // Where contents are settled, the place decides on them.
  support::RandomSource ofPlace(number);
  support::RandomSource& chance = contents == Contents::Settled ? ofPlace : random;

  support::Folder folder("/place" + std::to_string(number));
  if (!chance.OneIn(3)) folder.WithFile("foo.vnx");
  if (chance.OneIn(3)) folder.WithFile("foo.x");
  if (chance.OneIn(3)) folder.WithFile("FOO.vnx");
  if (chance.OneIn(2)) folder.WithClass(support::Folder("Cls").WithFile("foo.vnx"));
  if (chance.OneIn(3)) folder.WithClass(support::Folder("foo").WithFile("foo.vnx"));
  if (chance.OneIn(3)) folder.With(support::Folder("private").WithFile("foo.vnx"));
  if (chance.OneIn(3)) folder.WithPackage(support::Folder("p").WithFile("foo.x").WithClass(support::Folder("Cls")));
  return folder;
}

inline PathPtrs RandomComponents(support::RandomSource& random, Contents contents) {
  PathPtrs components(random.Below(6));
  for (PathPtr& component : components) {
    support::APath folders;
    for (std::size_t left = random.Below(20); left > 0; --left) folders.With(RandomFolder(random, contents));
    component = folders.Build();
  }
  return components;
}

}  // namespace Quorvex::PathManagement::composite_tests
