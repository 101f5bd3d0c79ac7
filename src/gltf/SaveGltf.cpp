#include "gltf/SaveGltf.h"

#include "base/FileGroup.h"
#include "base/Folders.h"
#include "base/OutputFile.h"
#include "base/Text.h"
#include "gltf/MakeGltf.h"

#include <algorithm>
#include <optional>
#include <set>

namespace morlik
{

namespace
{

constexpr std::size_t kMostNameLetters = 60;

/// The name of a file for an object: its number and its name, in letters that all systems take.
std::string TitleOf(const GltfObject& object)
{
    std::string title = (object.IsStatic ? "static-" : "") + std::to_string(object.ID);
    if (object.Name.empty())
        return title;
    title += '-';
    for (const char letter : object.Name.substr(0, kMostNameLetters)) {
        const bool isPlain = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                             (letter >= 'a' && letter <= 'z') || letter == '_' || letter == '-';
        title += isPlain ? letter : '_';
    }
    return title;
}

/// The paths of the files of objects, each of its own, without their endings. Damaged sets may have
/// several objects of one number, and systems may take no notice of the case of letters.
std::vector<std::string> StemsOf(std::span<const GltfObject> objects, const std::string& folder)
{
    std::vector<std::string> stems;
    std::set<std::string> taken;
    for (const GltfObject& object : objects) {
        const std::string title = TitleOf(object);
        std::string unique = title;
        for (int number = 2; !taken.insert(ToUpper(unique)).second; ++number)
            unique = title + "--" + std::to_string(number);
        stems.push_back(FromPath(ToPath(folder) / ToPath(unique)));
    }
    return stems;
}

std::string WithoutEnding(const std::string& path)
{
    return FromPath(ToPath(path).replace_extension());
}

std::vector<std::string> FilesOf(const std::string& stem, const GltfOptions& options)
{
    if (options.InParts)
        return {stem + ".gltf", stem + ".bin", stem + ".png"};
    return {stem + ".glb"};
}

/// Writes the files of a document: those in parts appear together.
void WriteFiles(const std::string& stem, const DocumentFiles& document, const GltfOptions& options)
{
    const auto names = FilesOf(stem, options);
    const auto main = std::as_bytes(std::span(document.Main));
    if (!options.InParts) {
        WriteWholeFile(names[0], main);
        return;
    }
    FileGroup group(names[0]);
    group.Write(names[0], main);
    if (!document.Buffer.empty())
        group.Write(names[1], document.Buffer);
    if (!document.Image.empty())
        group.Write(names[2], document.Image);
    group.TakePlaces();
}

/// Writes the objects of a set.
class Saver
{
public:
    Saver(const ObjectSet& set, const GltfOptions& options, Reporter& report)
        : set_(set), options_(options), report_(report), messages_(report), textures_(set.Tiles)
    {
    }

    void Save(std::span<const GltfObject> objects, const std::vector<std::string>& stems)
    {
        const bool isOneEach = stems.size() == objects.size();
        std::vector<DecodedObject> decoded;
        for (std::size_t i = 0; i < objects.size(); ++i) {
            GiveTurn(i, objects.size());
            Try(objects[i], [&] {
                decoded.push_back(Decode(set_, objects[i], allowance_));
                if (isOneEach) {
                    Write(decoded, stems[i]);
                    decoded.clear();
                }
            });
            if (isOneEach)
                decoded.clear();
        }
        if (isOneEach || decoded.empty())
            return;
        try {
            Write(decoded, stems[0]);
        } catch (const ReadFailure& failure) {
            isWhole_ = false;
            report_.Message("These objects can't stand in one file", kAppTitle, failure.what());
        }
    }

    bool IsWhole() const { return isWhole_; }

private:
    void GiveTurn(std::size_t done, std::size_t all)
    {
        Host& host = report_.TheHost();
        constexpr float kPercent = 100;
        host.SetProg(kPercent * static_cast<float>(done) / static_cast<float>(all));
        host.GiveTurn();
        if (host.StopRequested())
            throw Interrupted();
    }

    template <class Work>
    void Try(const GltfObject& object, Work work)
    {
        try {
            work();
        } catch (const ReadFailure& failure) {
            isWhole_ = false;
            report_.Message(GltfLabel(object) + " is left out", kAppTitle, failure.what());
        }
    }

    void Write(std::span<const DecodedObject> objects, const std::string& stem)
    {
        const std::string name = options_.InParts ? FileTitle(stem) : "";
        WriteFiles(stem, MakeGltf(set_, objects, name, options_, textures_), options_);
    }

    const ObjectSet& set_;
    const GltfOptions& options_;
    Reporter& report_;
    MessageScope messages_;
    TexturePixels textures_;
    Allowance allowance_;
    bool isWhole_ = true;
};

} // namespace

std::string GltfLabel(const GltfObject& object)
{
    return (object.IsStatic ? "static " : "") + std::to_string(object.ID) +
           (object.Name.empty() ? "" : " " + object.Name);
}

std::vector<std::string> GltfFiles(std::span<const GltfObject> objects, const std::string& path,
                                   bool isFolder, const GltfOptions& options)
{
    const auto stems =
        isFolder ? StemsOf(objects, path) : std::vector<std::string>{WithoutEnding(path)};
    std::vector<std::string> files;
    for (const std::string& stem : stems) {
        const auto of = FilesOf(stem, options);
        files.insert(files.end(), of.begin(), of.end());
    }
    return files;
}

bool SaveGltf(const ObjectSet& set, std::span<const GltfObject> objects, const std::string& path,
              bool isFolder, const GltfOptions& options, Reporter& report)
{
    if (isFolder)
        MakeFolder(ToPath(path));
    Saver saver(set, options, report);
    saver.Save(objects,
               isFolder ? StemsOf(objects, path) : std::vector<std::string>{WithoutEnding(path)});
    return saver.IsWhole();
}

} // namespace morlik
