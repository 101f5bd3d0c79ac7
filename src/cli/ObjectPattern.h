#pragma once

#include "level/LevelData.h"
#include "level/ObjectNames.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace morlik::cli
{

/// A list of objects that can't be followed: it is badly formed, or names what there is not.
class ListFault : public std::runtime_error
{
public:
    explicit ListFault(const std::string& why) : std::runtime_error(why) {}
};

/// An object as a pattern may mean it.
struct Candidate
{
    std::int32_t ID = 0;
    std::vector<std::string> Names; ///< in capitals; any may be empty
};

/// The objects of a level by their places. Moveables have the names of their own game and of the
/// editor's.
std::vector<Candidate> MoveablesOf(const LevelData& level, const ObjectNames& names);
std::vector<Candidate> StaticsOf(const LevelData& level, const ObjectNames& names);

/// Which objects a user means: a number, a range of them ("10-30") or a name, in letters of either
/// case, in which `*` and `?` stand for any letters and for one; behind "static:" they are static
/// meshes, else moveables.
class ObjectPattern
{
public:
    /// `ListFault` for an empty text.
    explicit ObjectPattern(const std::string& text);

    bool IsStatic() const { return isStatic_; }
    /// Whether it is one number or one name.
    bool IsSingle() const;
    bool IsAll() const;
    bool Means(const Candidate& candidate) const;
    /// What to say where no object of a "level" or another source is meant.
    std::string Fault(const std::string& source, const std::vector<Candidate>& candidates) const;

private:
    std::string Near(const std::vector<Candidate>& candidates) const;

    std::string text_;
    std::string pattern_; ///< in capitals, without "static:"
    bool isStatic_ = false;
    std::optional<std::int32_t> first_; ///< with `last_`: a range of numbers
    std::optional<std::int32_t> last_;
};

} // namespace morlik::cli
