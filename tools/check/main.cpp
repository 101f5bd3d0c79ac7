#include "platform/Platform.h"
#include "tools/check/ObjectSetCheck.h"

#include <iostream>
#include <string>

/// morlik-check SET.was GAME: runs every check over the files of an object set and prints what it
/// finds. Exit status 0 good, 1 complaints or no WAD file, 2 wrong use.
int main(int argc, char** argv)
{
    const morlik::ConsoleTexts console;
    const auto arguments = morlik::Arguments(argc, argv);
    const bool complete = arguments.size() == 2;
    const std::string set = complete ? arguments[0] : "";
    const std::string number = complete ? arguments[1] : "";
    const int game = number.size() == 1 ? number[0] - '0' : 0;
    if (set.size() < 5 || set[set.size() - 4] != '.' || game < 1 || game > 5) {
        std::cerr << "usage: morlik-check SET.was GAME    (GAME is 1 to 5)\n";
        return 2;
    }
    const auto report = morlik::check::CheckSet(set.substr(0, set.size() - 4), game);
    for (const std::string& extension : report.Missing)
        std::cout << "skipped: there is no " << extension << " file\n";
    for (const std::string& problem : report.Problems)
        std::cout << problem << '\n';
    const bool hasWad = report.Missing.empty() || report.Missing.front() != ".wad";
    const bool good = hasWad && report.Problems.empty();
    std::cout << (good ? "good" : "NOT good") << '\n';
    return good ? 0 : 1;
}
