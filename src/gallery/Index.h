#pragma once

#include "base/FileGroup.h"

#include <cstddef>
#include <string>
#include <vector>

namespace morlik::gallery
{

/// A level of the index.
struct IndexEntry
{
    std::string Folder; ///< of its page, below "levels/"
    std::string Below;  ///< where its file was found, below the folder that was named
};

/// What an index holds.
struct IndexCounts
{
    std::size_t Levels = 0;
    std::size_t Objects = 0;
};

/// Writes the index into a group of the gallery's folder `root`, which ends in "/": "index.html"
/// with all levels in this order, and "search.js" with all their objects, a line for each level:
///
///   morlikIndex.push([folder, title, below, game, objects]), the objects as in `Piece`
///
/// The levels are read back one by one from their pieces, so that any number of them can be there.
/// `FileFailure`.
IndexCounts WriteIndex(FileGroup& group, const std::string& root,
                       const std::vector<IndexEntry>& entries);

/// Removes the folders of levels that aren't in the index, and files of the store that no page of
/// it uses. Only what has such a name as the gallery gives is looked at. What can't be removed
/// stays.
void RemoveUnused(const std::string& root, const std::vector<IndexEntry>& entries);

} // namespace morlik::gallery
