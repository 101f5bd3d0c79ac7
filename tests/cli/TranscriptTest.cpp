// Transcripts of command lines: what each prints and writes stands in tests/cli/transcripts, as a
// user would see it, and must come out so again. With MORLIK_ACCEPT=1 in the environment the
// files are written anew: look at each difference before it is committed.
//
// A line that begins with "$ " is a command line of morlik-cli, as `CliTest` takes them, or one of
// the orders of `Prepare`. Below it stand what it prints, its errors behind "! ", its status where
// that isn't 0, and the files and empty folders that it made ("+") or removed ("-").

#include "samples/Project.h"
#include "samples/Textures.h"
#include "tests/cli/RunCli.h"

#ifdef MORLIK_PNG
#include "picture/MovingFile.h"
#include "tests/support/ReadPng.h"
#endif

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>

namespace morlik::test
{

namespace
{

/// FNV-1a: so short that no library is worth it.
std::string HashOf(std::span<const std::byte> bytes)
{
    std::uint32_t hash = 0x811c9dc5;
    for (const std::byte byte : bytes)
        hash = (hash ^ std::to_integer<std::uint32_t>(byte)) * 0x01000193;
    return Hex(hash);
}

Strings LinesOf(std::istream& in)
{
    Strings lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/// What a file is known by; of those that libraries compress as their version does, no size.
std::string Described(const std::string& name, std::span<const std::byte> bytes)
{
    const std::string ending = ToLower(name.substr(std::min(name.size(), name.find_last_of('.'))));
#ifdef MORLIK_PNG
    if (ending == ".png" && !bytes.empty() && bytes[0] == std::byte{0x89}) { // and not a level
        const Picture picture = DecodePNG(bytes);
        return std::to_string(picture.Width) + 'x' + std::to_string(picture.Height) + ' ' +
               HashOf(std::as_bytes(std::span(picture.Pixels)));
    }
#endif
    if (ending == ".webp" || ending == ".glb")
        return "";
    return std::to_string(bytes.size()) + ' ' + HashOf(bytes);
}

/// A text that is the same on all systems, whatever their paths have between folders.
std::string Plain(std::string text)
{
#ifdef _WIN32
    text = WithSlashes(text);
    for (std::size_t at = 0; (at = text.find("//", at)) != std::string::npos;)
        text.erase(at, 1);
#endif
    return text;
}

class Transcripts : public CliTest, public testing::WithParamInterface<const char*>
{
protected:
    /// Carries out an order that prepares a file, if that is what the words are. In the names "~"
    /// stands for a blank.
    ///   level NAME rich GAME [COUNT VALUE]  a sample level, with a count that is changed
    ///   level NAME extended SLOTS       one of IV with so many slots of sounds; of 1024, its
    ///                                   samples are those of a main.sfx
    ///   level NAME painted COUNT        one of IV with three objects of so many textures, static
    ///                                   meshes below 0
    ///   level NAME doubled 0            one of IV with faces on top of each other
    ///   level NAME crowded COUNT        one of IV with so many static meshes
    ///   project NAME, sfx NAME COUNT    a project, a main.sfx with the first of its samples
    ///   text NAME WORDS                 a file of these words, with "\r" and "\n" in them
    ///   bytes NAME OFFSET VALUE...      other bytes in a file; counted from its end below 0
    ///   cut NAME SIZE, copy NAME TO, link NAME TO, remove NAME
    bool Prepare(const std::string& order, const Strings& names) const
    {
        const auto path = [&](std::size_t i) { return ToPath(File(names.at(i))); };
        const std::map<std::string, std::function<void()>> orders{
            {"level", [&] { MakeLevel(names); }},
            {"project",
             [&] { Write(names[0], samples::WriteProject(samples::MakeProject()).Bytes); }},
            {"sfx",
             [&] {
                 auto sounds = samples::SampleSounds();
                 sounds.resize(std::stoul(names.at(1)));
                 Write(names[0], samples::WriteMainSfx(sounds).Bytes);
             }},
            {"text", [&] { MakeText(names); }},
            {"bytes", [&] { PutBytes(names); }},
            {"cut", [&] { std::filesystem::resize_file(path(0), std::stoul(names.at(1))); }},
            {"copy", [&] { Write(names.at(1), Read(names[0])); }},
            {"link", [&] { std::filesystem::create_hard_link(path(0), path(1)); }},
            {"remove", [&] { std::filesystem::remove_all(path(0)); }},
        };
        const auto found = orders.find(order);
        if (found == orders.end())
            return false;
        for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), 2); ++i)
            std::filesystem::create_directories(path(i).parent_path());
        found->second();
        return true;
    }

    /// What a command line leads to, with "%" for the folder.
    std::string Told(const std::string& line)
    {
        std::istringstream in(line);
        Strings words;
        for (std::string word; in >> word;)
            words.push_back(word);
        Strings names(words.begin() + 1, words.end());
        for (std::string& name : names)
            std::ranges::replace(name, '~', ' ');
        if (Prepare(words.at(0), names))
            return "";
        if (words[0] == "show")
            return Shown(names.at(0));
        if (words[0] == "damage")
            return OfDamage(words, line);
        const FilesSeen before = Look(seen_);
        const Ran ran = Run(line);
        std::string told = ran.Out;
        std::istringstream errors(ran.Errors);
        for (const std::string& error : LinesOf(errors))
            told += "! " + error + '\n';
        if (ran.Status != 0)
            told += "status " + std::to_string(ran.Status) + '\n';
        seen_ = Look(before);
        for (const auto& [name, file] : seen_)
            if (!before.contains(name) || before.at(name).Hash != file.Hash)
                told += "+ " + name + (file.What.empty() ? "" : "  ") + file.What + '\n';
        for (const auto& [name, file] : before)
            if (!seen_.contains(name))
                told += "- " + name + '\n';
        return Replaced(told);
    }

private:
    struct FileSeen
    {
        std::filesystem::file_time_type Time;
        std::string Hash;
        std::string What; ///< as it is told
    };
    using FilesSeen = std::map<std::string, FileSeen>;

    /// The files and the empty folders below the folder. Files that were seen before and have not
    /// been written since are not read again: their time tells it, but for those that were so young
    /// that a further write may have the same.
    FilesSeen Look(const FilesSeen& before)
    {
#ifdef _WIN32 // whose library tells whole seconds
        constexpr std::chrono::seconds kYoung{2};
#else
        constexpr std::chrono::milliseconds kYoung{100};
#endif
        FilesSeen files;
        const auto trusted = looked_ - kYoung;
        looked_ = std::filesystem::file_time_type::clock::now();
        const auto folder = ToPath(File(""));
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            const std::string name = WithSlashes(FromPath(entry.path().lexically_relative(folder)));
            if (entry.is_directory() && std::filesystem::is_empty(entry.path()))
                files[name + '/'] = {};
            if (!entry.is_regular_file())
                continue;
            const auto found = before.find(name);
            const auto time = entry.last_write_time();
            if (found != before.end() && found->second.Time == time && time < trusted) {
                files.insert(*found);
                continue;
            }
            const auto bytes = Read(name);
            files[name] = {time, HashOf(bytes), Described(name, bytes)};
        }
        return files;
    }

    void MakeLevel(const Strings& names) const
    {
        const std::string& kind = names.at(1);
        const int number = std::stoi(names.at(2));
        const auto game = kind == "rich" ? static_cast<VersionCode>(number) : kTR4;
        auto level = samples::MakeRichLevel(game);
        if (kind == "extended")
            samples::MakeExtended(level, narrow<std::uint16_t>(number), number == 1024);
        if (kind == "painted")
            Paint(level, number);
        if (kind == "doubled")
            for (samples::MeshContent& mesh : level.Meshes) {
                const auto faces = mesh.Rectangles;
                mesh.Rectangles.insert(mesh.Rectangles.end(), faces.begin(), faces.end());
            }
        if (kind == "crowded")
            level.StaticMeshes.resize(static_cast<std::size_t>(number), level.StaticMeshes.back());
        auto part = PartOf(level);
        if (names.size() > 4)
            part.SetCount(names[3], std::stoll(names[4]));
        Write(names.at(0), FileOf(level, part));
    }

    /// Gives each of the first three moveables or static meshes so many textures of its own.
    static void Paint(samples::LevelContent& level, int count)
    {
        for (int object = 0; object < 3; ++object) {
            const auto at = static_cast<std::size_t>(object);
            const auto mesh = level.MeshTable.at(static_cast<std::size_t>(
                count < 0 ? level.StaticMeshes.at(at).Mesh : level.Moveables.at(at).StartingMesh));
            for (int i = 0; i < std::abs(count); ++i)
                level.Meshes.at(mesh).Rectangles.push_back(
                    {{0, 1, 2, 3},
                     samples::AddTexture(level,
                                         {.X = i % 100, .Y = i / 100, .Width = 9 + 9 * object})});
        }
    }

    void MakeText(const Strings& names) const
    {
        std::string text = names.at(1);
        for (std::size_t i = 2; i < names.size(); ++i)
            text += ' ' + names[i];
        for (const auto& [told, meant] : {std::pair{"\\r", "\r"}, {"\\n", "\n"}})
            for (std::size_t at = 0; (at = text.find(told)) != std::string::npos;)
                text.replace(at, 2, meant);
        WriteText(names[0], text);
    }

    void PutBytes(const Strings& names) const
    {
        auto bytes = Read(names.at(0));
        std::size_t at = Place(names.at(1), bytes);
        for (std::size_t i = 2; i < names.size(); ++i)
            bytes.at(at++) = static_cast<std::byte>(std::stoi(names[i], nullptr, 0));
        Write(names[0], bytes);
    }

    /// damage NAME FROM COUNT LINE: what the line tells of the file with one byte that is wrong, at
    /// so many places in turn, by its kinds, and a hash of all of it.
    std::string OfDamage(const Strings& words, const std::string& line) const
    {
        const auto whole = Read(words.at(1));
        const std::size_t from = Place(words.at(2), whole);
        const auto count = static_cast<std::size_t>(std::stoi(words.at(3)));
        const std::string command =
            line.substr(line.find(' ' + words[3] + ' ') + 2 + words[3].size());
        std::map<std::string, int> counts;
        std::string all;
        for (std::size_t i = 0; i < count; ++i) {
            auto bytes = whole;
            bytes.at(from + i * (bytes.size() - from) / count) ^=
                std::array{std::byte{1}, std::byte{0x80}, std::byte{0xff}}[i % 3];
            Write(words[1], bytes);
            const Ran ran = Run(command);
            const std::string told = Replaced(ran.Out + ran.Errors);
            all += told;
            ++counts["status " + std::to_string(ran.Status) + '\n' + Kind(told)];
        }
        Write(words[1], whole);
        std::string table;
        for (const auto& [told, times] : counts)
            table += std::to_string(times) + " times " + told;
        return table + HashOf(std::as_bytes(std::span(all))) + '\n';
    }

    /// An offset; below 0 from the end of the file.
    static std::size_t Place(const std::string& word, std::span<const std::byte> bytes)
    {
        const auto place = std::stoll(word);
        return static_cast<std::size_t>(place < 0 ? std::ssize(bytes) + place : place);
    }

    /// What is told, with "#" for its numbers and "" for its names.
    static std::string Kind(const std::string& told)
    {
        const std::string hex = "0123456789ABCDEFabcdefx";
        const std::string letters = hex + "ghijklmnopqrstuvwyzGHIJKLMNOPQRSTUVWXYZ_";
        std::string kind;
        for (std::size_t at = 0; at < told.size();) {
            const std::size_t end = std::min(told.find_first_not_of(letters, at), told.size());
            const std::string word = told.substr(at, end - at);
            const bool isNumber = word.find_first_of("0123456789") != std::string::npos &&
                                  word.find_first_not_of(hex) == std::string::npos;
            kind += isNumber ? "#" : word;
            at = end + 1;
            if (end == told.size())
                break;
            kind += told[end];
            const std::size_t close = told[end] == '"' ? told.find('"', at) : std::string::npos;
            if (close == std::string::npos)
                continue;
            kind += '"';
            at = close + 1;
        }
        return kind;
    }

    std::string Shown(const std::string& name) const
    {
        const auto bytes = Read(name);
        std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        std::erase(text, '\r');
        return Replaced(text);
    }

    std::string Replaced(std::string text) const
    {
        const std::string folder = Plain(File(""));
        text = Plain(text);
        for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;)
            text.replace(at, folder.size(), "%");
        return text.empty() || text.back() == '\n' ? text : text + "\n(no line end)\n";
    }

    FilesSeen seen_;
    std::filesystem::file_time_type looked_; ///< when that was
};

TEST_P(Transcripts, AreTheSameAgain)
{
#ifdef MORLIK_PNG
    if (GetParam() == std::string("gallery") && !HasWebP())
        GTEST_SKIP() << "This build has no moving pictures";
#endif
    const std::string path = std::string(MORLIK_TRANSCRIPTS "/") + GetParam() + ".txt";
    std::ifstream file(path);
    const Strings expected = LinesOf(file);
    ASSERT_FALSE(expected.empty()) << path;
    std::string told;
    bool isNoted = true; // a note stands right above its command
    for (const std::string& line : expected) {
        const bool isNote = line.starts_with("# ");
        if (!isNote && !line.starts_with("$ "))
            continue;
        told += (isNoted ? "" : "\n") + line + '\n';
        if (!isNote)
            told += Told(line.substr(2));
        isNoted = isNote;
    }
    if (std::getenv("MORLIK_ACCEPT") != nullptr) { // NOLINT(concurrency-mt-unsafe)
        std::ofstream(path) << told;
        return;
    }
    std::istringstream in(told);
    const Strings given = LinesOf(in);
    std::string command;
    for (std::size_t i = 0; i < std::max(given.size(), expected.size()); ++i) {
        const std::string line = i < expected.size() ? expected[i] : "nothing";
        if (line.starts_with("$ "))
            command = line;
        ASSERT_EQ(Plain(i < given.size() ? given[i] : "nothing"), Plain(line)) << command;
    }
}

std::string NameOf(const testing::TestParamInfo<const char*>& transcript)
{
    return transcript.param;
}
INSTANTIATE_TEST_SUITE_P(Commands, Transcripts,
                         testing::Values("check", "convert", "find", "info", "links", "many",
                                         "use"),
                         NameOf);
#ifdef MORLIK_PNG
INSTANTIATE_TEST_SUITE_P(Pictures, Transcripts, testing::Values("pictures"), NameOf);
#endif
#ifndef _WIN32 // where main.sfx and MAIN.Sfx are one file, and the last bits of a sine are others
INSTANTIATE_TEST_SUITE_P(Names, Transcripts, testing::Values("sounds"), NameOf);
#ifdef MORLIK_PNG
INSTANTIATE_TEST_SUITE_P(Models, Transcripts, testing::Values("gallery", "gltf", "textures"),
                         NameOf);
#endif
#endif

} // namespace

} // namespace morlik::test
