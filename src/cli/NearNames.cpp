#include "cli/NearNames.h"

#include <algorithm>
#include <utility>

namespace morlik::cli
{

namespace
{

/// Letters to change, take out or put in to make one text of the other.
std::size_t Distance(const std::string& text, const std::string& name)
{
    std::vector<std::size_t> row(name.size() + 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = i;
    for (std::size_t p = 0; p < text.size(); ++p) {
        std::size_t diagonal = std::exchange(row[0], p + 1);
        for (std::size_t i = 0; i < name.size(); ++i) {
            const std::size_t change = diagonal + (text[p] == name[i] ? 0U : 1U);
            diagonal = row[i + 1];
            row[i + 1] = std::min({change, row[i] + 1, row[i + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string NearNames(const std::string& text, const std::vector<std::string>& names)
{
    constexpr std::size_t kMostNear = 4;
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const auto distance = Distance(text, name);
        const bool isPart = name.find(text) != std::string::npos;
        if (!name.empty() && (isPart || distance <= 1 + text.size() / 3))
            near.emplace_back(isPart ? 0 : distance, name);
    }
    std::ranges::sort(near);
    near.erase(std::unique(near.begin(), near.end()), near.end());
    std::string list;
    for (std::size_t i = 0; i < std::min(near.size(), kMostNear); ++i)
        list += (i == 0 ? "" : ", ") + near[i].second;
    return list;
}

} // namespace morlik::cli
