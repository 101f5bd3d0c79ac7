#include "set/Was.h"

#include "base/Bytes.h"

#include <utility>

namespace morlik
{

namespace
{

/// The part of a source path before the digit of the game.
constexpr std::string_view kRoot = ":Z:\\TOMB";

constexpr std::size_t kMostLines = std::size_t{1} << 16U;

std::string RootOf(VersionCode game)
{
    return std::string(kRoot) + DigitsOf(game) + "\\";
}

} // namespace

void WriteWas(TextLines& file, const ObjectSet& set)
{
    const auto source = RootOf(set.Game) + set.SourceTitle + "\\";
    for (const ListedObject& object : set.Listed)
        file.Line(object.EditorName + source + object.GameName);
}

std::optional<WasLine> CutWasLine(const std::string& line, VersionCode game)
{
    const auto root = RootOf(game);
    const auto source = line.find(root);
    const auto end = line.rfind('\\');
    if (source == std::string::npos || end <= source + root.size())
        return std::nullopt;
    const auto title = source + root.size();
    return WasLine{{line.substr(0, source), line.substr(end + 1)}, line.substr(title, end - title)};
}

VersionCode GameOfWas(std::string_view text)
{
    const auto at = text.find(kRoot);
    if (at == std::string_view::npos || at + kRoot.size() >= text.size())
        return kNoLevel;
    return GameOf(text[at + kRoot.size()] - '0');
}

std::vector<std::string> ReadLines(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    reader.Section("text");
    std::vector<std::string> lines;
    std::string line;
    while (reader.Left() != 0) {
        const char letter = reader.Read<char>();
        if (letter == '\n' ||
            (letter == '\r' && (reader.Left() == 0 || reader.Read<char>() != '\n')))
            reader.Fail("line " + std::to_string(lines.size() + 1) + " doesn't end in CR LF");
        if (lines.size() == kMostLines)
            reader.Fail("more lines than any list has");
        if (letter == '\r')
            lines.push_back(std::exchange(line, {}));
        else
            line += letter;
    }
    if (!line.empty())
        reader.Fail("the last line doesn't end in CR LF");
    return lines;
}

} // namespace morlik
