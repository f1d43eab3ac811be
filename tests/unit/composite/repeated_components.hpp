#pragma once

// Two components that share a folder, each with an entry of its own for it.

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// first: /a with the class Cls, and /b. second: /c, and /a once more, now with the classes Cls and New. Each folder
/// holds a foo.vnx.
struct RepeatedComponents {
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const FakePath> first =
      support::APath()
          .Recording("first", log)
          .With(support::Folder("/a").WithFile("foo.vnx").WithClass(support::Folder("Cls").WithFile("foo.vnx")))
          .With(support::Folder("/b").WithFile("foo.vnx"))
          .Build();
  std::shared_ptr<const FakePath> second = support::APath()
                                               .Recording("second", log)
                                               .With(support::Folder("/c").WithFile("foo.vnx"))
                                               .With(support::Folder("/a")
                                                         .WithFile("foo.vnx")
                                                         .WithClass(support::Folder("Cls").WithFile("foo.vnx"))
                                                         .WithClass(support::Folder("New").WithFile("foo.vnx")))
                                               .Build();

  [[nodiscard]] PathPtrs Both() const { return {first, second}; }
};

}  // namespace Quorvex::PathManagement::composite_tests
