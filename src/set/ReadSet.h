#pragma once

#include "base/Files.h"
#include "set/ObjectSet.h"

#include <memory>
#include <string>

namespace morlik
{

/// Names of the files of an object set, from the name of its list, which ends in ".was".
class SetNames
{
public:
    explicit SetNames(const std::string& fileName) : stem_(fileName.substr(0, fileName.size() - 4))
    {
    }

    /// With an extension, such as "wad".
    std::string With(const char* extension) const { return stem_ + "." + extension; }
    std::string Info() const { return stem_ + " Info.txt"; }
    std::string SoundFolder() const { return stem_ + "-Sounds"; }

private:
    std::string stem_;
};

/// A whole file of a set; `FileFailure` if it can't be read or is larger than any of them.
std::shared_ptr<const FileBytes> LoadSetFile(const std::string& path);
/// The same for the files of a set that are lists.
std::shared_ptr<const FileBytes> LoadListFile(const std::string& path);

/// Reads an object set back from its files, by the name of its list. WAV files that are not there
/// leave their samples without one. `FileFailure` for a file that can't be read, `ReadFailure` for
/// one that is damaged, or a list that names no game.
ObjectSet ReadSet(const std::string& fileName);

} // namespace morlik
