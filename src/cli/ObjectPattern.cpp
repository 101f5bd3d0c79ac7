#include "cli/ObjectPattern.h"

#include "base/Text.h"
#include "cli/NearNames.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace morlik::cli
{

namespace
{

constexpr std::string_view kStatic = "static:";

/// Whether a text matches a pattern in which '*' stands for any letters and '?' for one.
bool Matches(std::string_view pattern, std::string_view text)
{
    std::size_t p = 0;
    std::size_t t = 0;
    std::optional<std::size_t> star;
    std::size_t resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star) { // let the last star take one letter more
            p = *star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

std::optional<std::int32_t> NumberIn(std::string_view text)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace

std::vector<Candidate> MoveablesOf(const LevelData& level, const ObjectNames& names)
{
    std::vector<Candidate> list;
    for (const Moveable& moveable : level.Moveables)
        list.push_back({moveable.ObjectID,
                        {ToUpper(names.Moveable(level.Version, moveable.ObjectID)),
                         ToUpper(names.Moveable(kTR4, moveable.ObjectID))}});
    return list;
}

std::vector<Candidate> StaticsOf(const LevelData& level, const ObjectNames& names)
{
    std::vector<Candidate> list;
    for (const StaticMesh& mesh : level.StaticMeshes)
        list.push_back({mesh.ObjectID, {ToUpper(names.Static(mesh.ObjectID))}});
    return list;
}

ObjectPattern::ObjectPattern(const std::string& text) : text_(text), pattern_(ToUpper(text))
{
    isStatic_ = pattern_.starts_with(ToUpper(kStatic));
    if (isStatic_)
        pattern_.erase(0, kStatic.size());
    const auto dash = pattern_.find('-', 1);
    first_ = NumberIn(std::string_view(pattern_).substr(0, dash));
    last_ =
        dash == std::string::npos ? first_ : NumberIn(std::string_view(pattern_).substr(dash + 1));
    if (pattern_.empty())
        throw ListFault("\"" + Printable(text) + "\" names no object");
}

bool ObjectPattern::IsSingle() const
{
    return pattern_.find_first_of("*?") == std::string::npos && first_ == last_;
}

bool ObjectPattern::IsAll() const
{
    return pattern_.find_first_not_of('*') == std::string::npos;
}

bool ObjectPattern::Means(const Candidate& candidate) const
{
    if (first_ && last_)
        return candidate.ID >= *first_ && candidate.ID <= *last_;
    return std::ranges::any_of(candidate.Names, [this](const std::string& name) {
        return !name.empty() && Matches(pattern_, name);
    });
}

std::string ObjectPattern::Fault(const std::string& source,
                                 const std::vector<Candidate>& candidates) const
{
    const bool byName = !first_ || !last_;
    const auto near = byName ? Near(candidates) : std::string();
    return "The " + source + " has no " + (isStatic_ ? "static mesh" : "moveable") + " \"" +
           Printable(text_) + "\"" + (near.empty() ? "" : "; near: " + near);
}

std::string ObjectPattern::Near(const std::vector<Candidate>& candidates) const
{
    std::vector<std::string> names;
    for (const Candidate& candidate : candidates)
        names.insert(names.end(), candidate.Names.begin(), candidate.Names.end());
    return NearNames(pattern_, names);
}

} // namespace morlik::cli
