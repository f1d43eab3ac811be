// The name of a folder or file in any storage: a scheme and a path, always in normal form.
//
// A value the size of a pointer, to an immutable counted record that holds the text and its hash; copying is cheap and
// never throws, and any number of threads may read and copy. No storage is touched, but for what getResolvedIRI looks
// up in the table of mounts.
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <cstddef>
#include <foundation/export.hpp>
#include <functional>
#include <string>
#include <vector>

namespace foundation::storage::vfs {

namespace detail {

struct NormalForm;

/// What an identifier points to. Never changed, never seen by a caller.
struct IdentifierRecord : boost::intrusive_ref_counter<IdentifierRecord> {
  /// Takes the parts over and computes the hash.
  explicit IdentifierRecord(NormalForm&& form);

  std::u16string text;       ///< in normal form
  std::size_t schemeLength;  ///< in code units, without the colon
  std::size_t pathStart;     ///< where the path begins in the text
  bool isRootless;           ///< that path has no separator in front
  std::size_t hash;          ///< of the text
};

}  // namespace detail

/// An identifier in normal form.
///
/// - `scheme://host/path`, or `scheme:path` for a rootless one, which names a place relative to a folder nobody has
///   named yet;
/// - scheme and host in lower case, and `localhost` left out for `file`;
/// - no dot segments: the root absorbs "..", a rootless identifier keeps leading ones;
/// - no trailing separator but the root's; for `file` and rootless identifiers, no empty segment;
/// - escapes upper-case and only where needed: controls, '%', '?', '#', a '/' inside a name, and bytes that are not
///   UTF-8; all else, blanks and non-ASCII included, stands as it is.
///
/// `AbsoluteIRI(x.toString()) == x` for every x. There is no moved-from state: a move is a copy.
class FOUNDATION_EXPORT AbsoluteIRI {
 public:
  /// Parses `text` and brings it to normal form. Accepted: a scheme of two or more characters, ':', then
  /// "//authority/path", "/path" or a rootless path. A segment is split off before it is decoded, so an escaped '/'
  /// never becomes a separator, while "%2e%2e" is a dot segment.
  ///
  /// Throws Exception, with the whole text, for a query, a fragment, a malformed escape, a raw control character, a
  /// lone surrogate that stands for no byte, and a bad scheme or authority. O(n).
  explicit AbsoluteIRI(const std::u16string& text);
  AbsoluteIRI(const AbsoluteIRI&) noexcept = default;
  AbsoluteIRI& operator=(const AbsoluteIRI&) noexcept = default;
  ~AbsoluteIRI() = default;

  /// In lower case, without the colon.
  [[nodiscard]] std::u16string getScheme() const;
  /// The authority, decoded; empty when there is none.
  [[nodiscard]] std::u16string getHost() const;
  /// The whole text in normal form. Valid as long as this object or a copy of it.
  [[nodiscard]] const std::u16string& toString() const noexcept { return record_->text; }
  /// The last segment, decoded. A root, and a rootless identifier that is empty or all "..", has an empty name.
  [[nodiscard]] std::u16string getName() const;
  /// The decoded path, this folder's own name included: "/a/b", "/" for a root, "a/b" when rootless. What was an
  /// escaped '/' is no longer told apart here; getSegments keeps it.
  [[nodiscard]] std::u16string getPath() const;
  /// The decoded segments from the root on; empty for a root.
  [[nodiscard]] std::vector<std::u16string> getSegments() const;
  /// The folder that holds this one. What has an empty name is its own parent.
  [[nodiscard]] AbsoluteIRI getParent() const;
  /// The identifier of `name`, a decoded file name, in this folder.
  ///
  /// Throws Exception when `name` is empty, "." or "..", holds '/' or NUL, or stands for no bytes.
  [[nodiscard]] AbsoluteIRI getChild(const std::u16string& name) const;
  /// This identifier, or, when its scheme is mounted as an alias of another, the same place under that scheme. Touches
  /// no disk and does not care whether the place exists.
  [[nodiscard]] AbsoluteIRI getResolvedIRI() const;
  /// True for `scheme:path`, for which every storage operation fails.
  [[nodiscard]] bool isRootless() const noexcept { return record_->isRootless; }
  /// Computed once, from the text. The same within one process.
  [[nodiscard]] std::size_t hashValue() const noexcept { return record_->hash; }

  /// For hash tables that find it by its arguments.
  friend std::size_t hash_value(const AbsoluteIRI& iri) noexcept { return iri.hashValue(); }
  /// Whether the texts in normal form are the same; links and letter case are not looked through. Different ones are
  /// told apart by their hashes, as a rule.
  friend bool operator==(const AbsoluteIRI& left, const AbsoluteIRI& right) noexcept {
    if (left.record_ == right.record_) return true;
    return left.hashValue() == right.hashValue() && left.toString() == right.toString();
  }
  /// Compares the texts code unit by code unit.
  friend bool operator<(const AbsoluteIRI& left, const AbsoluteIRI& right) noexcept {
    return left.toString() < right.toString();
  }

 private:
  explicit AbsoluteIRI(detail::NormalForm&& form);

  boost::intrusive_ptr<const detail::IdentifierRecord> record_;
};

}  // namespace foundation::storage::vfs

/// So that identifiers can be keys of hash tables.
template <>
struct std::hash<foundation::storage::vfs::AbsoluteIRI> {
  /// O(1): it was computed when the identifier was made.
  [[nodiscard]] std::size_t operator()(const foundation::storage::vfs::AbsoluteIRI& iri) const noexcept {
    return iri.hashValue();
  }
};
