#pragma once

#include "cli/Commands.h"
#include "shell/Session.h"
#include "shell/ShownObjects.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morlik::cli
{

/// The files that a command reads which opens `file`, a level or the list of a set.
std::vector<std::string> InputsOf(const std::string& file);

/// What keeps a picture of `file` from being written as `output`, as the exit status, after a
/// complaint: an ending other than .png, or .webp for one that moves, a build that can't write such
/// files, or an output that would replace what is read.
int CheckPictureFiles(const std::string& file, const std::string& output, const Streams& streams,
                      bool moves = false);

/// An object as the commands tell it: by its place in the table of the set, its id and its names,
/// of which the first is shown and any may be empty.
struct NamedObject
{
    std::size_t Place = 0;
    std::int32_t ObjectID = 0;
    std::vector<std::string> Names;
};

/// The objects of a level or a set, and what they are called. The tables have all objects of a
/// level, of which a set may not take all.
struct OpenedSet
{
    std::unique_ptr<ShownObjects> Objects;
    std::vector<NamedObject> Moveables;
    std::vector<NamedObject> StaticMeshes;
    std::vector<NamedObject> Sprites; ///< the sequences; none where the set has no sprites

    /// All that stands in one set; `ReadFailure` for a level of too many textures for that.
    const ObjectSet& Whole() const;
};

/// The objects of a level, which is converted for that with its sprites and written nowhere, or of
/// a set that is read back, by the name of its list, SET.was. Objects of a level have the ids that
/// they have there: Tomb Raider V levels and their sets differ in them. `session` keeps the level
/// as long as the objects are looked at. A failure that ends the program, a `ReadFailure` or a
/// `FileFailure` where there is none, or where the level is damaged.
OpenedSet OpenSet(Session& session, const std::string& file);

/// The object that is told by its id or by one of its names, in any case of letters. Where there is
/// none, nothing after a message that tells which names are near.
std::optional<std::size_t> FindObject(const std::vector<NamedObject>& objects,
                                      const std::string& told, Reporter& report);

} // namespace morlik::cli
