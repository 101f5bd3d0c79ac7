// Makes the data files that stand beside the program: the catalogue from the lists in
// data/catalogue, and the default sound and sprite files of an object set, which are empty.
// usage: make_data CATALOGUE_FOLDER OUTPUT_FOLDER
// A list is a CSV file with the columns id and name and a header line; ids without a line get an
// empty name.

#include "base/Bytes.h"
#include "base/OutputFile.h"
#include "base/Text.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

namespace
{

/// The program has no place for a higher one.
constexpr unsigned long kMostID = 500;

struct List
{
    const char* Name;
    bool HasValue; ///< each entry ends in a 32-bit value that no program reads
};

/// In the order of the catalogue file.
constexpr std::array<List, 6> kLists{{
    {"moveables-tr4.csv", false},
    {"statics.csv", false},
    {"moveables-tr3.csv", true},
    {"moveables-tr2.csv", true},
    {"moveables-tr1.csv", true},
    {"moveables-tr5.csv", true},
}};

/// A CSV field; in a quoted one a double quote stands for one quote.
std::string Unquote(const std::string& field)
{
    if (field.size() < 2 || field.front() != '"' || field.back() != '"')
        return field;
    std::string text;
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
        text += field[i];
        if (field[i] == '"')
            ++i;
    }
    return text;
}

std::map<std::uint32_t, std::string> ReadList(const std::string& path)
{
    std::ifstream file(morlik::ToPath(path));
    std::string line;
    if (!std::getline(file, line))
        throw std::runtime_error("Can't read " + path);
    std::map<std::uint32_t, std::string> names;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const auto comma = line.find(',');
        if (comma == std::string::npos)
            throw std::runtime_error("Can't find a comma in " + line);
        const auto id = std::stoul(line.substr(0, comma));
        if (id > kMostID)
            throw std::runtime_error(path + " has an id of " + std::to_string(id));
        names[static_cast<std::uint32_t>(id)] = Unquote(line.substr(comma + 1));
    }
    return names;
}

void PutList(morlik::ByteSink& sink, const std::map<std::uint32_t, std::string>& names,
             bool hasValue)
{
    const std::uint32_t count = names.empty() ? 0 : names.rbegin()->first + 1;
    sink.Put(count);
    for (std::uint32_t id = 0; id < count; ++id) {
        const auto found = names.find(id);
        const std::string name = found != names.end() ? found->second : "";
        sink.Put(static_cast<std::uint32_t>(name.size()));
        sink.PutBytes(std::as_bytes(std::span(name)));
        if (hasValue)
            sink.Put(std::uint32_t{0});
    }
}

void WriteCatalogue(const std::string& lists, const std::string& path)
{
    morlik::ByteWriter file;
    for (const List& list : kLists)
        PutList(file, ReadList(lists + "/" + list.Name), list.HasValue);
    morlik::WriteWholeFile(path, file.Bytes());
}

void WriteDefaults(const std::string& folder)
{
    morlik::WriteWholeFile(folder + "/morlik.sam", {});

    // A sound map whose 370 slots name no sound; no sound details and no sample indices.
    morlik::ByteWriter sounds;
    sounds.PutTable(std::vector<std::int16_t>(370, -1));
    sounds.Put(std::array<std::int32_t, 2>{});
    morlik::WriteWholeFile(folder + "/morlik.sfx", sounds.Bytes());

    // The version; no sprite textures, no tile bytes, no sequences.
    morlik::ByteWriter sprites;
    sprites.Put(std::array<std::int32_t, 4>{129, 0, 0, 0});
    morlik::WriteWholeFile(folder + "/morlik.swd", sprites.Bytes());
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc != 3)
            throw std::runtime_error("usage: make_data CATALOGUE_FOLDER OUTPUT_FOLDER");
        const std::string output = argv[2];
        WriteCatalogue(argv[1], output + "/TR4Objects.dat");
        WriteDefaults(output);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
