#include "base/FileIdentity.h"

#include "base/Files.h"
#include "base/Text.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace morlik
{

namespace
{

/// Nothing where there is no plain file.
std::optional<std::uintmax_t> SizeOf(const std::string& path)
{
    std::error_code fault;
    const auto size = std::filesystem::file_size(ToPath(path), fault);
    return fault ? std::nullopt : std::optional(size);
}

} // namespace

bool IsSameFile(const std::string& one, const std::string& other)
{
    std::error_code missing;
    return std::filesystem::equivalent(ToPath(one), ToPath(other), missing);
}

void GuardInputs(std::span<const std::string> inputs, std::span<const std::string> outputs)
{
    struct Existing
    {
        const std::string& Name;
        std::uintmax_t Size;
    };
    std::vector<Existing> existing;
    for (const std::string& output : outputs)
        if (const auto size = SizeOf(output))
            existing.push_back({output, *size});
    if (existing.empty()) // into a new folder there is nothing to look at
        return;
    // A batch may have thousands of both. One file has one size, and few others have it too.
    std::unordered_multimap<std::uintmax_t, const std::string*> inputsBySize;
    for (const std::string& input : inputs)
        if (const auto size = SizeOf(input))
            inputsBySize.emplace(*size, &input);
    for (const auto& [output, size] : existing) {
        const auto [first, last] = inputsBySize.equal_range(size);
        for (auto at = first; at != last; ++at)
            if (IsSameFile(*at->second, output))
                throw FileFailure(
                    "write", output,
                    (*at->second == output ? "it" : "it is " + *at->second + ", which") +
                        " is read and would be replaced");
    }
}

} // namespace morlik
