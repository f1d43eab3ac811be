#include "output.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "encoded_text.hpp"

namespace vornixpath {

void WriteResult(std::u16string_view text, OutputForm form) {
  const bool exactly = form == OutputForm::NulTerminated;
  WriteSafeResult(exactly ? fl::filesystem::to_bytes(text) : fl::filesystem::to_displayed_text(text), form);
}

void WriteSafeResult(std::string_view bytes, OutputForm form) {
  std::cout << bytes << (form == OutputForm::NulTerminated ? '\0' : '\n');
}

void WriteMessage(std::string_view message) { std::cerr << "vornixpath: " << message << '\n'; }

void WriteWarning(std::string_view message) { std::cerr << "vornixpath: warning: " << message << '\n'; }

std::string ExactText(const foundation::storage::vfs::AbsoluteIRI& iri) {
  return WithoutDanger(iri.toString());  // in which '%' is part of an escape already
}

std::string Quoted(std::u16string_view text) { return '"' + fl::filesystem::to_displayed_text(text) + '"'; }

void DiscardOutput() {
  // Never destroyed: the stream is flushed once more when every static object is gone.
  static auto& nowhere = *new std::stringbuf;
  std::cout.rdbuf(&nowhere);  // and what stood in the stream as an error is gone
}

void FinishOutput() {
  std::cout.flush();
  if (!std::cout) throw std::runtime_error("cannot write to standard output");
}

}  // namespace vornixpath
