#pragma once

#include <gmock/gmock.h>

#include <search_path_interfaces/factories.hpp>

namespace Quorvex::PathManagement::support {

/// Factories whose answers a test dictates; strict ones fail a test that lets them be touched.
class MockPathEntryFactory : public IPathEntryFactory {
 public:
  MOCK_METHOD(std::shared_ptr<const IPathEntry>, CreateMainEntry, (const foundation::storage::vfs::AbsoluteIRI&),
              (const, override));
  MOCK_METHOD(void, WriteToolboxCache, (std::ostream&, const foundation::storage::vfs::AbsoluteIRI&),
              (const, override));
};

class MockPathFactory : public IPathFactory {
 public:
  MOCK_METHOD(std::shared_ptr<const IPath>, CreatePath,
              (const std::vector<foundation::storage::vfs::AbsoluteIRI>&, const IPathEntryFactory&), (const, override));
};

}  // namespace Quorvex::PathManagement::support
