#pragma once

#include "set/ObjectSet.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Checks that hold for every object set, whatever level it was made from. Each returns its
/// complaints as sentences; an empty list is a good file.
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

/// Every pointer, index and range of a WAD file, the palette tile of the older games, the
/// transitions and commands, and a walk along all frames. Passed over is what the games' own levels
/// bring along and the conversion keeps: transitions to a frame number that their animation doesn't
/// have, and sounds and frames that commands name. Where the animations don't follow their
/// moveables, which is told, nothing is compared with the moveables.
/// `notes` gets what is odd but no fault: a moveable without meshes and animations keeps an ID
/// free.
Complaints CheckWad(const ObjectSet& set, Complaints* notes = nullptr);

/// One line for each object: a name, a source path and a name, which is the same one for static
/// meshes and in Tomb Raider IV. Names may be empty, as those of unknown objects are. Without a
/// `wad`, the set with its objects, nothing is said of the number of lines.
Complaints CheckWas(const std::vector<std::string>& lines, const ObjectSet* wad, VersionCode game);

/// Whole tiles, every sprite inside one of them, every sequence inside the sprites.
Complaints CheckSwd(const SpriteTables& sprites);

/// The sound map leads into the details, those into the sample indices.
Complaints CheckSfx(const SoundTables& sounds);

/// A line for each sample of each detail. Tomb Raider IV and V take ready-made tables, whose list
/// is not compared.
Complaints CheckSam(const std::vector<std::string>& lines, const SoundTables& sounds,
                    VersionCode game);

/// A WAV file for each line, of the size that its header tells.
Complaints CheckWaves(const std::string& folder, const std::vector<std::string>& lines,
                      VersionCode game);

struct SetReport
{
    /// Each begins with the extension of its file, "wad: ", those of WAV files with "wav: ".
    Complaints Problems;
    /// What is no fault of the set, but worth a look: WAV files that no line names, objects that
    /// are none.
    Complaints Notes;
    /// Extensions of the files that don't exist; nothing else is said about them.
    std::vector<std::string> Missing;
};

/// All files of a set, by the path of the set less its extension; one that can't be read is a
/// complaint, and what needs it isn't compared.
SetReport CheckSet(const std::string& setBase, VersionCode game);

} // namespace morlik::check
