// Times the conversion of levels against two floors: programs that read the same bytes, inflate the
// same streams and write as many bytes, a plain one and one with the libraries and the link of
// morlik-cli (see floor.cpp). The three take turns, so that all see the same machine; what counts
// are the ratios of the medians of their CPU time. The memory is the most that either of the
// conversion and this program had at a time, so that small figures are this program's own.
// Then pictures and glTF files of objects, what the size of a level costs, what a second processor
// brings, and the start of the window. usage: morlik-bench [RUNS [LEVEL...]]; without levels, the
// samples and those of MORLIK_LEVELS.

#include "base/OutputFile.h"
#include "base/Text.h"
#include "bench/Pictures.h"
#include "bench/Process.h"
#include "cli/Commands.h"
#include "level/LevelData.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using morlik::bench::RunProcess;
using morlik::bench::Usage;

constexpr double kMiB = 1024.0 * 1024.0;

/// What the floors do, and how much memory the goal allows.
struct FloorPlan
{
    std::vector<std::string> Steps;
    double GoalMiB = 32;
};

/// The zlib streams of Tomb Raider IV and V that a conversion inflates: the 32-bit tiles and, in
/// IV, the level block, the first and the fourth block.
void AddStreams(const std::string& level, FloorPlan& plan)
{
    const auto file = morlik::FileBytes::Load(level);
    morlik::ByteReader reader(file.Bytes());
    if (reader.Read<std::uint32_t>() != 0x00345254)
        return;
    const bool isTR5 = morlik::EndsWithNoCase(level, ".trc");
    reader.Skip(6);
    for (int block = 0; block < (isTR5 ? 1 : 4); ++block) {
        const auto inflated = reader.Read<std::uint32_t>();
        const auto compressed = reader.Read<std::uint32_t>();
        if (block == 0 || block == 3) {
            plan.Steps.push_back("inflate=" + std::to_string(reader.Position()) + "," +
                                 std::to_string(compressed) + "," + std::to_string(inflated));
            plan.GoalMiB += inflated / kMiB;
        }
        reader.Skip(compressed);
    }
}

FloorPlan MakePlan(const std::string& level, const fs::path& output)
{
    FloorPlan plan;
    AddStreams(level, plan);
    plan.GoalMiB += static_cast<double>(fs::file_size(level)) / kMiB;
    for (const auto& entry : fs::recursive_directory_iterator(output)) {
        if (!entry.is_regular_file())
            continue;
        plan.Steps.push_back("write=" + std::to_string(entry.file_size()));
        plan.GoalMiB += static_cast<double>(entry.file_size()) / kMiB;
    }
    return plan;
}

double Median(std::vector<double> values)
{
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

constexpr std::array<const char*, 5> kPhases{"read", "inflate", "convert", "tiles", "write"};

/// Medians of what a conversion tells of its own time, in milliseconds of the clock.
std::vector<double> PhaseTimes(const std::string& level, const std::string& set, int runs)
{
    std::array<std::vector<double>, kPhases.size()> times;
    for (int run = 0; run < runs; ++run) {
        std::ostringstream told;
        morlik::cli::ConvertOptions options;
        options.Files = {level};
        options.Output = set;
        options.Json = options.Timings = true;
        morlik::cli::Convert(options, {told, told});
        const auto phases = nlohmann::json::parse(told.str()).at("files").at(0).at("milliseconds");
        for (std::size_t i = 0; i < kPhases.size(); ++i)
            times[i].push_back(phases.at(kPhases[i]));
    }
    std::vector<double> medians;
    medians.reserve(times.size());
    for (auto& list : times)
        medians.push_back(Median(std::move(list)));
    return medians;
}

void PrintHead(int runs)
{
    std::printf(
        "CPU time of a conversion in ms, then that of each floor and how many times as much\n"
        "the conversion takes: \"plain\" has zlib and shared libraries, \"honest\" the library\n"
        "and the link of morlik-cli. Then where the time of the clock goes. Medians of %d runs.\n\n"
        "%-14s %7s %7s %6s %7s %6s %9s",
        runs, "level", "taken", "plain", "times", "honest", "times", "peak MiB");
    for (const char* phase : kPhases)
        std::printf(" %8s", phase);
    std::printf("\n");
}

/// Writing over files costs other times than creating them; all sides create theirs.
void Empty(const fs::path& folder)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
}

void Measure(const std::string& level, int runs, const fs::path& scratch)
{
    const auto bin = morlik::ProgramFolder();
    const auto output = scratch / "set";
    Empty(output);
    const std::vector<std::string> convert{bin / "morlik-cli", "convert", level, "-o",
                                           output / "set.was"};
    if (!RunProcess(convert).Good) {
        std::printf("%-28s  does not convert\n", morlik::FileTitle(level).c_str());
        return;
    }
    const auto plan = MakePlan(level, output);
    constexpr std::array<const char*, 2> kFloors{"morlik-floor", "morlik-floor-honest"};
    std::array<std::vector<std::string>, kFloors.size()> floors;
    for (std::size_t i = 0; i < kFloors.size(); ++i) {
        floors[i] = {bin / kFloors[i], level, output};
        floors[i].insert(floors[i].end(), plan.Steps.begin(), plan.Steps.end());
    }

    std::vector<double> convertTimes;
    std::array<std::vector<double>, kFloors.size()> floorTimes;
    double peak = 0;
    for (int run = 0; run < runs; ++run) {
        Empty(output);
        const Usage used = RunProcess(convert);
        convertTimes.push_back(used.CpuMilliseconds);
        peak = std::max(peak, used.PeakMiB);
        for (std::size_t i = 0; i < kFloors.size(); ++i) {
            Empty(output);
            const Usage floor = RunProcess(floors[i]);
            if (!floor.Good)
                throw std::runtime_error(std::string("Can't run ") + kFloors[i]);
            floorTimes[i].push_back(floor.CpuMilliseconds);
        }
    }
    const double taken = Median(convertTimes);
    std::printf("%-14s %7.2f", morlik::FileTitle(level).c_str(), taken);
    for (const auto& times : floorTimes) {
        const double least = Median(times);
        std::printf(" %7.2f %6.2f", least, taken / least);
    }
    std::printf(" %4.1f/%4.1f", peak, plan.GoalMiB);
    for (const double time : PhaseTimes(level, output / "set.was", std::min(runs, 21)))
        std::printf(" %8.3f", time);
    std::printf("\n");
    static_cast<void>(std::fflush(stdout));
}

/// Median CPU time of a command in milliseconds.
double CpuOf(const std::vector<std::string>& command, int runs)
{
    std::vector<double> times(static_cast<std::size_t>(runs));
    for (double& time : times)
        time = RunProcess(command).CpuMilliseconds;
    return Median(std::move(times));
}

/// Sample levels of 1, 4 and 16 times the size: the cost of one time must not grow with it.
void MeasureSizes(int runs, const fs::path& scratch)
{
    using namespace morlik;
    const auto bin = ProgramFolder();
    std::printf("\nms of CPU time for each time of a sample level, without the program's start\n\n"
                "%-14s %8s %8s %8s\n",
                "sample", "1 time", "4 times", "16 times");
    // A word of wrong use ends it at once, and without an exception, whose cost is no start's.
    const double start = CpuOf({bin / "morlik-cli", "check", "none"}, runs);
    fs::create_directories(scratch);
    for (const VersionCode game : {kTR1, kTR2, kTR3, kTR4, kTR5}) {
        std::printf("Tomb Raider %-2d", static_cast<int>(game));
        for (const std::size_t times : {1U, 4U, 16U}) {
            const auto level = scratch / (game == kTR5 ? "sized.trc" : "sized");
            WriteWholeFile(
                level, samples::WriteLevel(samples::MakeRichLevel(game, {.Times = times})).Bytes);
            const double taken =
                CpuOf({bin / "morlik-cli", "convert", level, "-o", scratch / "s.was"}, runs);
            std::printf(" %8.3f", (taken - start) / static_cast<double>(times));
        }
        std::printf("\n");
    }
}

/// How much faster a folder of levels is converted two at a time.
void MeasureJobs(const std::vector<std::string>& levels, int runs, const fs::path& scratch)
{
    std::vector<std::string> command{
        morlik::ProgramFolder() / "morlik-cli", "convert", "--jobs", "1", "-d", scratch / "sets"};
    for (int copy = 0; copy < 8; ++copy) {
        for (const std::string& level : levels) {
            const auto folder = scratch / "levels";
            fs::create_directories(folder);
            // Not one sum: g++ 12 at -O3 sees strings overlap in a sum of two temporaries.
            std::string title = std::to_string(copy);
            title += morlik::FileTitle(level);
            const auto name = folder / title;
            fs::copy_file(level, name, fs::copy_options::overwrite_existing);
            command.push_back(name);
        }
    }
    std::printf("\n%zu levels, ms of the clock   --jobs 1  --jobs 2  times as fast\n",
                command.size() - 6);
    for (const bool isNew : {true, false}) {
        std::array<std::vector<double>, 2> times;
        for (int run = 0; run < runs; ++run) {
            for (const std::size_t jobs : {1U, 2U}) {
                if (isNew) {
                    fs::remove_all(scratch / "sets");
                    sync(); // else the disk still gives up the old files while the new ones come
                }
                command[3] = std::to_string(jobs);
                const Usage used = RunProcess(command);
                if (!used.Good)
                    throw std::runtime_error("The levels don't all convert");
                times[jobs - 1].push_back(used.WallMilliseconds);
            }
        }
        const double alone = Median(times[0]);
        const double both = Median(times[1]);
        std::printf("%-28s %8.1f  %8.1f  %13.2f\n",
                    isNew ? "into a new folder" : "over the sets of before", alone, both,
                    alone / both);
    }
}

/// Time from the start of the program to its painted window, without a display.
void MeasureWindow(int runs)
{
    std::vector<double> wall;
    std::vector<double> cpu;
    for (int run = 0; run < runs; ++run) {
        const Usage used = RunProcess({morlik::ProgramFolder() / "morlik-window-start"});
        wall.push_back(used.WallMilliseconds);
        cpu.push_back(used.CpuMilliseconds);
    }
    std::printf("start to a visible window: %.1f ms, %.1f ms of them CPU time\n", Median(wall),
                Median(cpu));
}

/// Time from a click on an object of a level to its picture in the window.
void MeasureClicks(const std::vector<std::string>& levels, const fs::path& scratch)
{
    std::printf("\nclick on an object to its picture, ms of the clock   median  longest\n");
    const auto told = scratch / "clicks";
    for (const std::string& level : levels) {
        RunProcess({morlik::ProgramFolder() / "morlik-window-start", level, told});
        std::ifstream file(told);
        double median = 0;
        double longest = 0;
        if (file >> median >> longest)
            std::printf("%-51s %7.1f %8.1f\n", fs::path(level).filename().c_str(), median, longest);
        fs::remove(told);
    }
}

/// Where the programs write: in memory, unless TMPDIR says otherwise. Of a disk, the file system's
/// state counts most: where files have just been deleted, to create some can take twenty times as
/// long for minutes.
fs::path ScratchFolder()
{
    const fs::path memory = "/dev/shm";
    const bool isTold = std::getenv("TMPDIR") != nullptr; // NOLINT(concurrency-mt-unsafe)
    const bool inMemory = !isTold && fs::is_directory(memory);
    return (inMemory ? memory : fs::temp_directory_path()) / "morlik-bench";
}

std::vector<std::string> StandardLevels(const fs::path& scratch)
{
    using namespace morlik;
    std::vector<std::string> levels;
    const auto samples = scratch / "samples";
    Empty(samples);
    const std::vector<std::pair<VersionCode, std::string>> games{{kTR1, "sample1.phd"},
                                                                 {kTR2, "sample2.tr2"},
                                                                 {kTR3, "sample3.tr2"},
                                                                 {kTR4, "sample4.tr4"},
                                                                 {kTR5, "sample5.trc"}};
    for (const auto& [game, name] : games) {
        levels.push_back(samples / name);
        const auto file = samples::WriteLevel(samples::MakeRichLevel(game));
        WriteWholeFile(levels.back(), file.Bytes);
    }
    const char* folder = std::getenv("MORLIK_LEVELS"); // NOLINT(concurrency-mt-unsafe)
    if (folder != nullptr && fs::is_directory(folder)) {
        std::vector<std::string> real;
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.is_regular_file() && entry.path().extension() != ".md")
                real.push_back(entry.path());
        std::sort(real.begin(), real.end());
        levels.insert(levels.end(), real.begin(), real.end());
    }
    return levels;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 101; // NOLINT(cert-err34-c)
        const auto scratch = ScratchFolder();
        std::vector<std::string> levels(argv + std::min(argc, 2), argv + argc);
        if (levels.empty())
            levels = StandardLevels(scratch);
        PrintHead(runs);
        for (const std::string& level : levels)
            Measure(level, runs, scratch);
        morlik::bench::MeasurePictures(levels, std::min(runs, 21));
        morlik::bench::MeasureGltf(levels, std::min(runs, 7));
        MeasureSizes(std::min(runs, 21), scratch);
        MeasureJobs(levels, std::min(runs, 11), scratch);
        MeasureWindow(std::min(runs, 21));
        MeasureClicks(levels, scratch);
        fs::remove_all(scratch);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
