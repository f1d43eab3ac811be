#include "side_by_side.hpp"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "location_text.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::IPathEntry;
using Entries = std::vector<EntryPtr>;

constexpr std::size_t kLongestRun = 3;
constexpr std::size_t kLeastWidth = 20;
constexpr std::string_view kBetween = " | ";
constexpr std::string_view kCut = "...";

ComparedCell CellOf(const EntryPtr& entry, const FolderChange* change) {
  ComparedCell cell{std::nullopt, ShownText(entry->GetAbsoluteIRI())};
  if (change != nullptr) cell.change = change->kind;
  return cell;
}

/// Puts the folders of two paths into rows.
class Alignment {
 public:
  explicit Alignment(const PathComparison& comparison)
      : oldEntries_(comparison.before->GetMainEntries()),
        newEntries_(comparison.after->GetMainEntries()),
        before_(*oldEntries_),
        after_(*newEntries_) {
    for (const FolderChange& change : comparison.changes) {
      for (const EntryPtr& entry : {change.before, change.after}) {
        if (entry) changes_.emplace(entry.get(), &change);
      }
    }
    for (std::size_t i = 0; i < after_.size(); ++i) newPlaces_.emplace(after_[i].get(), i);
  }

  std::vector<ComparedRow> Run() && {
    for (const EntryPtr& entry : before_) {
      const FolderChange* const change = ChangeOf(entry);
      const EntryPtr partner = PartnerOf(entry, change);
      if (!partner) {
        rows_.push_back({CellOf(entry, change), std::nullopt});
        continue;
      }
      while (after_[next_] != partner) AddNext();
      rows_.push_back({CellOf(entry, change), CellOf(partner, change)});
      ++next_;
    }
    while (next_ < after_.size()) AddNext();
    return std::move(rows_);
  }

 private:
  [[nodiscard]] const FolderChange* ChangeOf(const EntryPtr& entry) const {
    const auto found = changes_.find(entry.get());
    return found == changes_.end() ? nullptr : found->second;
  }

  // What stands beside an old entry: itself where it is unchanged, and what it was refreshed to unless something that
  // is unchanged lies between.
  [[nodiscard]] EntryPtr PartnerOf(const EntryPtr& entry, const FolderChange* change) const {
    if (change == nullptr) return entry;
    if (change->kind != ChangeKind::Refreshed) return nullptr;
    const std::size_t place = newPlaces_.at(change->after.get());
    for (std::size_t i = next_; i < place; ++i) {
      if (ChangeOf(after_[i]) == nullptr) return nullptr;
    }
    return place < next_ ? nullptr : change->after;
  }

  void AddNext() {
    const EntryPtr& entry = after_[next_++];
    rows_.push_back({std::nullopt, CellOf(entry, ChangeOf(entry))});
  }

  std::shared_ptr<const Entries> oldEntries_;
  std::shared_ptr<const Entries> newEntries_;
  const Entries& before_;
  const Entries& after_;
  std::unordered_map<const IPathEntry*, const FolderChange*> changes_;
  std::unordered_map<const IPathEntry*, std::size_t> newPlaces_;
  std::vector<ComparedRow> rows_;
  std::size_t next_ = 0;  // of the new entries
};

bool IsUnchanged(const ComparedRow& row) { return row.before && row.after && !row.before->change; }

std::vector<ComparedRow> WithRunsFolded(const std::vector<ComparedRow>& rows) {
  std::vector<ComparedRow> folded;
  for (auto first = rows.begin(); first != rows.end();) {
    const auto last = std::find_if_not(first, rows.end(), IsUnchanged);
    const auto length = static_cast<std::size_t>(last - first);
    if (length > kLongestRun) {
      const ComparedCell remark{std::nullopt, "(" + std::to_string(length) + " unchanged)"};
      folded.push_back({remark, remark});
    } else {
      folded.insert(folded.end(), first, last);
    }
    first = last;
    if (first != rows.end()) folded.push_back(*first++);
  }
  return folded;
}

bool BeginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

// Characters of one column each.
std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

std::string FittedTo(std::size_t width, const std::string& text) {
  if (WidthOf(text) <= width) return text;
  std::size_t begin = text.size();
  for (std::size_t left = width - kCut.size(); left > 0; --left) {
    do {
      --begin;
    } while (!BeginsCharacter(text[begin]));
  }
  return std::string(kCut).append(text, begin);
}

class Columns {
 public:
  explicit Columns(const Layout& layout)
      : column_((std::max(layout.width, kLeastWidth) - kBetween.size()) / 2), isColoured_(layout.isColoured) {}

  [[nodiscard]] std::string Line(const ComparedRow& row) const {
    const std::string left = row.before ? Text(*row.before) : std::string();
    std::string line = row.before ? Painted(*row.before, left) : left;
    line.append(column_ - WidthOf(left), ' ');
    line += row.after ? kBetween : kBetween.substr(0, kBetween.size() - 1);
    if (row.after) line += Painted(*row.after, Text(*row.after));
    return line;
  }

 private:
  [[nodiscard]] std::string Text(const ComparedCell& cell) const {
    const char mark = cell.change ? MarkOf(*cell.change) : ' ';
    return FittedTo(column_ - 2, cell.text).insert(0, {mark, ' '});
  }

  [[nodiscard]] std::string Painted(const ComparedCell& cell, const std::string& text) const {
    return isColoured_ && cell.change ? Coloured(*cell.change, text) : text;
  }

  std::size_t column_;
  bool isColoured_;
};

std::string_view ColourOf(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return "32";  // green
    case ChangeKind::Removed:
      return "31";  // red
    case ChangeKind::Moved:
      return "33";  // yellow
    case ChangeKind::Refreshed:
      return "36";  // cyan
  }
  return "0";
}

}  // namespace

std::vector<ComparedRow> RowsOf(const PathComparison& comparison) {
  return WithRunsFolded(Alignment(comparison).Run());
}

std::vector<std::string> LayOut(const std::vector<ComparedRow>& rows, const Layout& layout) {
  const Columns columns(layout);
  std::vector<std::string> lines;
  lines.reserve(rows.size());
  for (const ComparedRow& row : rows) lines.push_back(columns.Line(row));
  return lines;
}

std::string Coloured(ChangeKind kind, const std::string& text) {
  return std::string("\x1b[").append(ColourOf(kind)).append("m").append(text).append("\x1b[0m");
}

}  // namespace vornixpath
