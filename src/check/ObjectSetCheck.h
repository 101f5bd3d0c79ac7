#pragma once

#include "check/ObjectSet.h"

#include <sstream>
#include <string>
#include <vector>

/// Checks that hold for every object set, whatever level it was made from. Each returns its
/// complaints as sentences, at most `kMostComplaints`; an empty list is a good file. `game` is 1
/// to 5.
namespace morlik::check
{

constexpr std::size_t kMostComplaints = 20;

using Complaints = std::vector<std::string>;

/// Gathers complaints made of texts and numbers.
struct Gatherer
{
    Complaints List;

    template <class... Pieces>
    void Add(const Pieces&... pieces)
    {
        std::ostringstream text;
        (text << ... << pieces);
        if (List.size() < kMostComplaints)
            List.push_back(text.str());
    }
};

/// Every pointer, index and range of a WAD file, the palette tile of games 1 to 3 and the form of
/// the frames. What a level may bring along itself and the conversion doesn't mend (the next
/// animation of an animation, the frames of a moveable that has no animation) is not looked at.
Complaints CheckWad(const WadFile& wad, int game);

/// One line for each object of `wad`: a name, a source path and a name, which is the same one for
/// static meshes and in game 4.
Complaints CheckWas(const std::vector<std::string>& lines, const WadFile& wad, int game);

/// Whole tiles, and every sprite on one of them.
Complaints CheckSwd(const SwdFile& swd);

/// SAM lines, SFX tables and the files of the "-Sounds" folder of `setBase` (the path of a set less
/// its extension) against each other. Games 4 and 5 take ready-made tables: there it is enough
/// that both files can be read.
Complaints CheckSounds(const std::string& setBase, int game);

struct SetReport
{
    Complaints Problems;
    /// Extensions of the files that don't exist; nothing else is said about them.
    std::vector<std::string> Missing;
};

/// All files of a set; one that can't be read is a complaint.
SetReport CheckSet(const std::string& setBase, int game);

} // namespace morlik::check
