#pragma once

namespace bench {

/// The first visible file on paths of 100, 1,000 and 10,000 folders of 100 files, beside one find in a flat map.
void RegisterLookups();

/// A partial pathname that one entry matches, beside a plain name on the same path.
void RegisterPartialPathnames();

/// Loading 10,000 real folders of 100 files, index included, beside a bare walk with as many threads.
void RegisterLoading();

/// Bytes of the heap a file of that path costs.
void RegisterMemory();

/// Finding and grading all that is hidden on that path in memory, beside asking for every name once.
void RegisterShadows();

/// Edits and a listing of a saved path of 100,000 folders by the tool, beside reading and writing that file.
void RegisterEditing();

/// A process of the tool that tells where a name stands on a path that a cache holds, trusted or proven, beside a
/// process that maps a file and looks one name up, and asks for the status of each folder.
void RegisterStarting();

/// The first list of a path over 1,000,000 entries, a third of them repeated, beside putting their locations into a
/// set.
void RegisterDeduplication();

/// Telling how two vectors of a million entries differ, beside sorting both by address and merging them.
void RegisterComparisons();

}  // namespace bench
