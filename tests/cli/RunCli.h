#pragma once

#include "cli/Commands.h"
#include "tests/support/Conversion.h"

#include <cctype>
#include <cstdlib>
#include <sstream>

namespace morlik::test
{

/// A command line that was carried out.
struct Ran
{
    int Status;
    std::string Out;
    std::string Errors;
};

inline Ran RunCli(const Strings& words, bool isTerminal = false)
{
    std::ostringstream out;
    std::ostringstream errors;
    const int status = cli::RunCommandLine(words, {out, errors, isTerminal});
    return {status, out.str(), errors.str()};
}

/// A text with one sign between the folders of its paths: where the system takes two, the program
/// leaves those of the user and puts its own behind them.
inline std::string WithSlashes(std::string text)
{
#ifdef _WIN32
    std::replace(text.begin(), text.end(), '\\', '/');
#endif
    return text;
}

/// Has the program find its data files.
inline void SetProgramFolder()
{
#ifdef _WIN32
    _putenv_s("MORLIK_FOLDER", MORLIK_DATA_FOLDER);
#else
    setenv("MORLIK_FOLDER", MORLIK_DATA_FOLDER, 1); // NOLINT(concurrency-mt-unsafe)
#endif
}

/// A folder with levels of all games, a main.sfx in other letters, and room for sets. In the lines
/// and texts of a test, "%0" to "%5" stand for the paths of these levels, "%a.was" for a file of
/// the folder, and "''" for an empty word.
class CliTest : public testing::Test
{
protected:
    CliTest()
    {
        SetProgramFolder();
        for (const VersionCode game : kGames) {
            // Not one sum: g++ 12 at -O3 sees strings overlap where a temporary is added to "l".
            std::string name = "l";
            name += DigitsOf(game) + LevelName(game);
            Levels.push_back(File(name));
            Write(name, samples::MakeRichLevel(game));
        }
        Write("MAIN.Sfx", MainSfxFile());
    }

    std::string File(const std::string& name) const { return folder_.File(name); }
    bool Exists(const std::string& name) const
    {
        return std::filesystem::exists(ToPath(File(name)));
    }
    std::vector<std::byte> Read(const std::string& name) const { return ReadFile(File(name)); }
    void Write(const std::string& name, std::span<const std::byte> bytes) const
    {
        WriteWholeFile(File(name), bytes);
    }
    void Write(const std::string& name, const samples::LevelContent& level) const
    {
        Write(name, WriteLevel(level).Bytes);
    }
    void WriteText(const std::string& name, const std::string& text) const
    {
        Write(name, std::as_bytes(std::span(text)));
    }

    std::string Filled(const std::string& text) const
    {
        std::string filled;
        for (std::size_t i = 0; i < text.size(); ++i)
            if (text[i] != '%')
                filled += text[i];
            else if (i + 1 < text.size() && text[i + 1] >= '0' && text[i + 1] <= '5')
                filled += Levels.at(static_cast<std::size_t>(text[++i] - '0'));
            else
                filled += File("");
        return filled;
    }

    Ran Run(const std::string& line, bool isTerminal = false) const
    {
        std::istringstream in(line);
        Strings words;
        for (std::string word; in >> word;)
            words.push_back(word == "''" ? "" : Filled(word));
        return RunCli(words, isTerminal);
    }

    /// Runs a line and expects its status and a part of what it tells of errors.
    Ran Expect(int status, const std::string& line, const std::string& told = {}) const
    {
        auto ran = Run(line);
        EXPECT_EQ(ran.Status, status) << line << '\n' << ran.Errors;
        EXPECT_PRED2(Has, WithSlashes(ran.Errors), WithSlashes(Filled(told))) << line;
        return ran;
    }

    Strings Levels;

private:
    TempFolder folder_;
};

} // namespace morlik::test
