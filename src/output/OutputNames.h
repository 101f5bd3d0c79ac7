#pragma once

#include <string>

namespace morlik
{

/// Names of the files of an object set, from the name of its list, which ends in ".was".
class OutputNames
{
public:
    explicit OutputNames(const std::string& fileName)
        : stem_(fileName.substr(0, fileName.size() - 4))
    {
    }

    /// With an extension, such as "wad".
    std::string With(const char* extension) const { return stem_ + "." + extension; }
    std::string Info() const { return stem_ + " Info.txt"; }
    std::string SoundFolder() const { return stem_ + "-Sounds"; }

private:
    std::string stem_;
};

} // namespace morlik
