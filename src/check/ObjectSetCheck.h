#pragma once

#include "check/ObjectSet.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Checks that hold for every object set, whatever level it was made from. Each returns its
/// complaints as sentences; an empty list is a good file. `game` is 1 to 5.
namespace morlik::check
{

/// Complaints beyond these are only counted.
constexpr std::size_t kMostComplaints = 20;

using Complaints = std::vector<std::string>;

/// Gathers complaints made of texts and numbers.
class Gatherer
{
public:
    template <class... Pieces>
    void Add(const Pieces&... pieces)
    {
        if (++total_ > kMostComplaints)
            return;
        std::ostringstream text;
        (text << ... << pieces);
        list_.push_back(text.str());
    }

    std::size_t Total() const { return total_; }

    /// The complaints, with the count of those that are not among them.
    Complaints Take()
    {
        if (total_ > kMostComplaints)
            list_.push_back("and " + std::to_string(total_ - kMostComplaints) + " more");
        return std::move(list_);
    }

private:
    Complaints list_;
    std::size_t total_ = 0;
};

/// Every pointer, index and range of a WAD file, the palette tile of games 1 to 3, the transitions
/// and commands, and a walk along all frames. Passed over is what the games' own levels bring along
/// and the conversion keeps: transitions to a frame number that their animation doesn't have, and
/// sounds and frames that commands name. Where the animations don't follow their moveables, which
/// is told, nothing is compared with the moveables.
Complaints CheckWad(const WadFile& wad, int game);

/// One line for each object: a name, a source path and a name, which is the same one for static
/// meshes and in game 4. Names may be empty, as those of unknown objects are. Without a `wad` there
/// are no objects to count and nothing is said of the number of lines.
Complaints CheckWas(const std::vector<std::string>& lines, const WadFile* wad, int game);

/// Whole tiles, every sprite inside one of them, every sequence inside the sprites.
Complaints CheckSwd(const SwdFile& swd);

/// The sound map leads into the details, those into the sample indices.
Complaints CheckSfx(const SfxFile& sfx);

/// A line for each sample of each detail. Games 4 and 5 take ready-made tables, whose list is not
/// compared.
Complaints CheckSam(const std::vector<std::string>& lines, const SfxFile& sfx, int game);

/// A WAV file for each line, of the size that its header tells.
Complaints CheckWaves(const std::string& folder, const std::vector<std::string>& lines, int game);

struct SetReport
{
    /// Each begins with the extension of its file, "wad: ", those of WAV files with "wav: ".
    Complaints Problems;
    /// What is no fault of the set, but worth a look: WAV files that no line names.
    Complaints Notes;
    /// Extensions of the files that don't exist; nothing else is said about them.
    std::vector<std::string> Missing;
};

/// All files of a set, by the path of the set less its extension; one that can't be read is a
/// complaint, and what needs it isn't compared.
SetReport CheckSet(const std::string& setBase, int game);

} // namespace morlik::check
