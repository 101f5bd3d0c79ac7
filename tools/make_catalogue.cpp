// Compiles the object names of data/catalogue to the catalogue file that stands beside the program.
// usage: make_catalogue CATALOGUE_FOLDER OUTPUT
// A list is a CSV file with the columns id and name and a header line; ids without a line get an
// empty name.

#include "base/Bytes.h"
#include "base/Files.h"
#include "base/Text.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

namespace {

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
        names[static_cast<std::uint32_t>(std::stoul(line.substr(0, comma)))] =
            Unquote(line.substr(comma + 1));
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

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc != 3)
            throw std::runtime_error("usage: make_catalogue CATALOGUE_FOLDER OUTPUT");
        morlik::OutputFile file(argv[2]);
        for (const List& list : kLists)
            PutList(file, ReadList(std::string(argv[1]) + "/" + list.Name), list.HasValue);
        file.Close();
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
