#include "storage_failure.hpp"

#include <foundation/storage/vfs/absolute_iri.hpp>

#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;

namespace {

bool IsMalformedText(const Exception& failure) { return failure.GetOperation().empty(); }

}  // namespace

std::string ReasonOf(const Exception& failure) {
  return IsMalformedText(failure) ? failure.what() : failure.GetError().message();
}

std::string InWords(const Exception& failure) {
  if (IsMalformedText(failure)) return failure.what();
  return "cannot " + failure.GetOperation() + ' ' + Quoted(TextOf(AbsoluteIRI(failure.GetOffendingText()))) + ": " +
         ReasonOf(failure);
}

}  // namespace vornixpath
