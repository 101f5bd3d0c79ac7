#include "cli/ObjectList.h"

#include "base/Files.h"
#include "base/Text.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace morlik::cli
{

namespace
{

constexpr char kFileMark = '@'; ///< what follows names a file with a list
constexpr std::size_t kMostListBytes = std::size_t{1} << 20U;

/// Sets the marks of the objects that an item means. Gives whether there are any.
bool Mark(const ObjectPattern& item, const std::vector<Candidate>& candidates, bool mark,
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
            const ObjectPattern item(text);
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

} // namespace

std::string NumberAndName(std::int32_t number, const std::string& name)
{
    return std::to_string(number) + (name.empty() ? "" : " " + name);
}

std::vector<std::string> FilesOfLists(const std::vector<std::string>& lists)
{
    std::vector<std::string> files;
    for (const std::string& list : lists)
        if (list.starts_with(kFileMark))
            files.push_back(list.substr(1));
    return files;
}

ObjectItems ReadItems(const std::string& list)
{
    ObjectItems items;
    const auto add = [&items](std::string item) {
        item.erase(0, item.find_first_not_of(" \t"));
        item.erase(item.find_last_not_of(" \t\r") + 1);
        if (!item.empty())
            items.push_back(std::move(item));
    };
    const bool isFile = list.starts_with(kFileMark);
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
    return NumberAndName(id, names.Moveable(level.Version, id));
}

std::string StaticText(const LevelData& level, const ObjectNames& names, std::size_t index)
{
    const auto id = level.StaticMeshes[index].ObjectID;
    return "static:" + NumberAndName(id, names.Static(id));
}

} // namespace morlik::cli
