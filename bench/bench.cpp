// Times the conversion of levels against its floor: a program that reads the same bytes, inflates
// the same streams and writes as many bytes. The two take turns, so that both see the same machine;
// what counts is the ratio of the medians of their CPU time.
// usage: morlik-bench [RUNS [LEVEL...]]; without levels, the samples and those of MORLIK_LEVELS.

#include "base/Files.h"
#include "base/Text.h"
#include "bench/Process.h"
#include "level/LevelData.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using morlik::bench::RunProcess;
using morlik::bench::Usage;

constexpr double kMiB = 1024.0 * 1024.0;

/// What the floor does, and how much memory the goal allows.
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

void Measure(const std::string& level, int runs, const fs::path& scratch)
{
    const auto bin = morlik::ProgramFolder();
    const auto output = scratch / "set";
    fs::remove_all(scratch);
    fs::create_directories(output);
    fs::create_directories(scratch / "floor");
    const std::vector<std::string> convert{bin / "morlik-cli", "convert", level, "-o",
                                           output / "set.was"};
    if (!RunProcess(convert).Good) {
        std::printf("%-28s  does not convert\n", morlik::FileTitle(level).c_str());
        return;
    }
    const auto plan = MakePlan(level, output);
    std::vector<std::string> floor{bin / "morlik-floor", level, scratch / "floor"};
    floor.insert(floor.end(), plan.Steps.begin(), plan.Steps.end());

    std::vector<double> convertTimes;
    std::vector<double> floorTimes;
    double peak = 0;
    for (int run = 0; run < runs; ++run) {
        const Usage used = RunProcess(convert);
        convertTimes.push_back(used.CpuMilliseconds);
        floorTimes.push_back(RunProcess(floor).CpuMilliseconds);
        peak = std::max(peak, used.PeakMiB);
    }
    const double taken = Median(convertTimes);
    const double least = Median(floorTimes);
    std::printf("%-16s %8.2f ms %8.2f ms   ratio %5.2f   peak %6.1f MiB of %6.1f\n",
                morlik::FileTitle(level).c_str(), taken, least, taken / least, peak, plan.GoalMiB);
    std::fflush(stdout);
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

std::vector<std::string> StandardLevels(const fs::path& scratch)
{
    using namespace morlik;
    std::vector<std::string> levels;
    const fs::path samples = scratch.string() + "-samples";
    fs::create_directories(samples);
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
        const auto scratch = fs::temp_directory_path() / "morlik-bench";
        std::vector<std::string> levels(argv + std::min(argc, 2), argv + argc);
        if (levels.empty())
            levels = StandardLevels(scratch);
        std::printf("CPU time of a conversion and of its floor, medians of %d runs\n", runs);
        for (const std::string& level : levels)
            Measure(level, runs, scratch);
        MeasureWindow(std::min(runs, 21));
        fs::remove_all(scratch);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
