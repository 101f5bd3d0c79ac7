#include "cli/ObjectList.h"

#include "base/Files.h"
#include "base/Text.h"
#include "cli/NearNames.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>
#include <utility>

namespace morlik::cli
{

namespace
{

constexpr std::string_view kStatic = "static:";
constexpr std::size_t kMostListBytes = std::size_t{1} << 20U;

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

/// An object of the level as an item may mean it.
struct Candidate
{
    std::int32_t ID;
    std::vector<std::string> Names; ///< in capitals
};

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

std::optional<std::int32_t> NumberIn(std::string_view text)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// An item of a list.
class Item
{
public:
    explicit Item(const std::string& text) : text_(text), pattern_(ToUpper(text))
    {
        isStatic_ = pattern_.starts_with(ToUpper(kStatic));
        if (isStatic_)
            pattern_.erase(0, kStatic.size());
        const auto dash = pattern_.find('-', 1);
        first_ = NumberIn(std::string_view(pattern_).substr(0, dash));
        last_ = dash == std::string::npos ? first_
                                          : NumberIn(std::string_view(pattern_).substr(dash + 1));
        if (pattern_.empty())
            throw ListFault("\"" + Printable(text) + "\" names no object");
    }

    bool IsStatic() const { return isStatic_; }
    /// Whether it is one number or one name.
    bool IsSingle() const
    {
        return pattern_.find_first_of("*?") == std::string::npos && first_ == last_;
    }
    bool IsAll() const { return pattern_.find_first_not_of('*') == std::string::npos; }
    bool Means(const Candidate& candidate) const
    {
        if (first_ && last_)
            return candidate.ID >= *first_ && candidate.ID <= *last_;
        return std::ranges::any_of(candidate.Names, [this](const std::string& name) {
            return !name.empty() && Matches(pattern_, name);
        });
    }

    /// What to say where no object is meant.
    std::string Fault(const std::string& source, const std::vector<Candidate>& candidates) const
    {
        const bool byName = !first_ || !last_;
        const auto near = byName ? Near(candidates) : std::string();
        return "The " + source + " has no " + (isStatic_ ? "static mesh" : "moveable") + " \"" +
               Printable(text_) + "\"" + (near.empty() ? "" : "; near: " + near);
    }

private:
    std::string Near(const std::vector<Candidate>& candidates) const
    {
        std::vector<std::string> names;
        for (const Candidate& candidate : candidates)
            names.insert(names.end(), candidate.Names.begin(), candidate.Names.end());
        return NearNames(pattern_, names);
    }

    std::string text_;
    std::string pattern_; ///< in capitals, without "static:"
    bool isStatic_ = false;
    std::optional<std::int32_t> first_; ///< with `last_`: a range of numbers
    std::optional<std::int32_t> last_;
};

/// Sets the marks of the objects that an item means. Gives whether there are any.
bool Mark(const Item& item, const std::vector<Candidate>& candidates, bool mark,
          std::vector<bool>& marks)
{
    bool found = false;
    for (std::size_t i = 0; i < candidates.size(); ++i)
        if (item.Means(candidates[i])) {
            marks[i] = mark;
            found = true;
        }
    return found;
}

std::vector<Candidate> CandidatesOf(const std::vector<NamedObject>& objects)
{
    std::vector<Candidate> list;
    for (const NamedObject& object : objects) {
        Candidate candidate{object.ObjectID, {}};
        for (const std::string& name : object.Names)
            candidate.Names.push_back(ToUpper(name));
        list.push_back(std::move(candidate));
    }
    return list;
}

/// The objects of a source that items mean.
ObjectChoice Choose(const std::string& source, const std::vector<Candidate>& moveables,
                    const std::vector<Candidate>& statics, const ObjectItems& objects,
                    const ObjectItems& without)
{
    ObjectChoice choice{.Moveables = std::vector<bool>(moveables.size(), objects.empty()),
                        .StaticMeshes = std::vector<bool>(statics.size(), objects.empty())};
    const auto follow = [&](const ObjectItems& items, bool mark) {
        for (const std::string& text : items) {
            const Item item(text);
            const auto& candidates = item.IsStatic() ? statics : moveables;
            auto& marks = item.IsStatic() ? choice.StaticMeshes : choice.Moveables;
            if (!Mark(item, candidates, mark, marks) && !item.IsAll() && (mark || item.IsSingle()))
                throw ListFault(item.Fault(source, candidates));
        }
    };
    follow(objects, true);
    follow(without, false);
    if (choice.Count() == 0)
        throw ListFault("No object of the " + source + " is left");
    return choice;
}

std::string TextOf(std::int32_t id, const std::string& name)
{
    return std::to_string(id) + (name.empty() ? "" : " " + name);
}

} // namespace

ObjectItems ReadItems(const std::string& list)
{
    ObjectItems items;
    const auto add = [&items](std::string item) {
        item.erase(0, item.find_first_not_of(" \t"));
        item.erase(item.find_last_not_of(" \t\r") + 1);
        if (!item.empty())
            items.push_back(std::move(item));
    };
    const bool isFile = list.starts_with('@');
    std::string text = list;
    if (isFile) {
        try {
            const auto file = FileBytes::Load(list.substr(1), kMostListBytes);
            text.assign(reinterpret_cast<const char*>(file.Bytes().data()), file.Bytes().size());
        } catch (const FileFailure& failure) {
            throw ListFault(failure.what());
        }
    }
    std::istringstream parts(text);
    for (std::string item; std::getline(parts, item, isFile ? '\n' : ',');)
        add(item);
    if (items.empty())
        throw ListFault("\"" + Printable(list) + "\" names no object");
    return items;
}

ObjectChoice ChooseByItems(const LevelData& level, const ObjectNames& names,
                           const ObjectItems& objects, const ObjectItems& without)
{
    return Choose("level", MoveablesOf(level, names), StaticsOf(level, names), objects, without);
}

ObjectChoice ChooseByItems(const OpenedSet& opened, const ObjectItems& objects,
                           const ObjectItems& without)
{
    return Choose("file", CandidatesOf(opened.Moveables), CandidatesOf(opened.StaticMeshes),
                  objects, without);
}

std::string MoveableText(const LevelData& level, const ObjectNames& names, std::size_t index)
{
    const auto id = level.Moveables[index].ObjectID;
    return TextOf(id, names.Moveable(level.Version, id));
}

std::string StaticText(const LevelData& level, const ObjectNames& names, std::size_t index)
{
    const auto id = level.StaticMeshes[index].ObjectID;
    return "static:" + TextOf(id, names.Static(id));
}

} // namespace morlik::cli
