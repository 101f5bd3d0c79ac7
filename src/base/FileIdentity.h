#pragma once

#include <span>
#include <string>

namespace morlik
{

/// Whether both are one file, under whatever names: by another path, by a link, in other letters
/// where the system doesn't tell them apart. A file that isn't there is no other.
bool IsSameFile(const std::string& one, const std::string& other);

/// No work may write over what it reads. A `FileFailure` that names both where one of the outputs
/// is one of the inputs.
void GuardInputs(std::span<const std::string> inputs, std::span<const std::string> outputs);

} // namespace morlik
