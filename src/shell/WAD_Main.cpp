#include "shell/WAD_Main.h"

#include "audio/AnimationSounds.h"
#include "base/FileGroup.h"
#include "base/FileIdentity.h"
#include "base/Folders.h"
#include "base/SampleLookup.h"
#include "base/Text.h"
#include "convert/ConvertLevel.h"
#include "set/ReadSet.h"
#include "set/Sounds.h"
#include "set/Swd.h"
#include "set/Wad.h"
#include "set/Was.h"
#include "shell/DataFiles.h"
#include "shell/SaveStatus.h"
#include "shell/SetFiles.h"

namespace morlik
{

namespace
{

constexpr const char* kExtension = ".was";

enum class Answer : std::uint8_t
{
    Read,
    Cancelled,
    Failed,
};

/// Brings the status back to rest when a save stops on its way.
class SaveScope
{
public:
    explicit SaveScope(Reporter& report) : report_(report) {}
    SaveScope(const SaveScope&) = delete;
    SaveScope& operator=(const SaveScope&) = delete;
    ~SaveScope()
    {
        if (!isUnderWay_)
            return;
        report_.TheHost().SetProg(0);
        SaveStatus(report_).Rest();
    }

    void Begin() { isUnderWay_ = true; }
    void End() { isUnderWay_ = false; }

private:
    Reporter& report_;
    bool isUnderWay_ = false;
};

/// One save, from the level to the last file of its set.
class Saver
{
public:
    Saver(const std::string& fileName, const LevelData& level, const SaveContext& context,
          SaveScope& scope)
        : fileName_(fileName),
          names_(fileName),
          level_(level),
          context_(context),
          report_(context.Report),
          scope_(scope),
          status_(report_)
    {
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    /// The Info file of a save that stopped ends before the group goes: a file that is open can't
    /// be removed on every system.
    ~Saver() { report_.Info.Abandon(); }

    /// Gives whether all files of the set are there.
    bool Run()
    {
        group_.emplace(names_.With("was"));
        if (!WriteWADFile())
            return false;
        const PhaseScope writing(report_.Times, Phase::Write);
        bool complete = WriteSounds();
        complete &= WriteSprites();
        WriteList();
        status_.Prog(0);
        status_.Rest();
        scope_.End();
        report_.Info.Close();
        group_->TakePlaces();
        context_.Result.IsWritten = true;
        return complete;
    }

private:
    /// Opens a binary file of the set, writes it and closes it.
    template <class Write>
    void WriteFile(const std::string& path, Write write)
    {
        OutputFile file(group_->DraftOf(path), path, &report_.Times);
        write(file);
        file.Close();
    }

    bool WriteWADFile()
    {
        const auto wad = names_.With("wad");
        OutputFile file(group_->DraftOf(wad), wad, &report_.Times);
        report_.Info.Open(group_->DraftOf(names_.Info()), names_.Info());
        scope_.Begin();
        report_.LogLine("Writing WAD file " + fileName_);
        Host& host = report_.TheHost();
        host.SetProg(0);
        auto set = ConvertLevel(level_, context_.Names, context_.LevelTitle,
                                {.UpdateHorizon = host.SkyFix(),
                                 .ExportSprites = host.ExpSpr(),
                                 .Objects = context_.Objects},
                                report_, [this](ConvertStage stage) { status_.Begin(stage); });
        if (!set)
            return false;
        set_ = std::move(*set);
        for (const std::string& line : set_.Info)
            report_.InfoLine(line);
        WriteWad(file, set_, status_);
        file.Close();
        return true;
    }

    bool WriteSounds()
    {
        status_.Stage("Writing SAM", 80);
        report_.LogLine("Writing SAM file");
        bool complete = set_.Sounds ? WriteSamples() : CopyDefault("sam");
        if (!set_.Sounds && HasMainSFX(level_))
            complete &= WriteWavesOnly();
        status_.Stage("Writing SFX", 85);
        report_.LogLine("Writing SFX file");
        if (set_.Sounds)
            WriteFile(names_.With("sfx"), [this](OutputFile& file) { WriteSfx(file, set_); });
        else
            complete &= CopyDefault("sfx");
        status_.Stage("Writing SWD", 90);
        return complete;
    }

    bool CopyDefault(const char* extension)
    {
        return CopyDataFile(std::string("morlik.") + extension, *group_, names_.With(extension),
                            report_);
    }

    /// The list of the samples and their WAV files.
    bool WriteSamples()
    {
        TextLines file;
        file.Open(group_->DraftOf(names_.With("sam")), names_.With("sam"));
        const Answer answer = HasMainSFX(level_) ? TakeMainSFX() : Answer::Read;
        WriteSam(file, set_.Samples);
        if (answer == Answer::Read)
            WriteWaveFiles();
        file.Close();
        return answer != Answer::Failed;
    }

    /// The WAV files of an extended level of Tomb Raider IV with its samples in `main.sfx`; the
    /// default SAM file doesn't list them.
    bool WriteWavesOnly()
    {
        const Answer answer = TakeMainSFX();
        if (answer == Answer::Read)
            WriteWaveFiles();
        return answer != Answer::Failed;
    }

    /// Asks for `main.sfx` and reads it in place of what was opened before: the sample indices of
    /// the level count in the chosen file.
    Answer TakeMainSFX()
    {
        const std::string file = context_.AskForMainSFX();
        context_.Result.LacksMainSFX = file.empty();
        if (file.empty())
            return Answer::Cancelled;
        GuardInputs({{file}}, FilesOfSet(fileName_));
        MainSFXState chosen;
        if (!ReadMainSFX(file, chosen, report_))
            return Answer::Failed;
        context_.MainSFX = std::move(chosen);
        ListWaves();
        set_.Owners.insert(set_.Owners.end(), context_.MainSFX.Files.begin(),
                           context_.MainSFX.Files.end());
        return Answer::Read;
    }

    /// The samples of the level in the chosen file.
    void ListWaves()
    {
        const auto chosen = ChooseObjects(level_, context_.Objects);
        const LevelData& level = chosen ? chosen->Level : level_;
        const auto waveOf = [&](std::int32_t sample) {
            return WaveOfSample(level, context_.MainSFX, sample);
        };
        LimitSounds([&] { ListSetSamples(set_, SoundTablesOf(level), waveOf); });
    }

    /// More sounds than any level has get their message.
    template <class Work>
    void LimitSounds(const Work& work)
    {
        try {
            work();
        } catch (const SoundsDamaged& failure) {
            report_.Stop(kSoundsDamaged, kAppTitle, failure.what());
        }
    }

    void WriteWaveFiles()
    {
        group_->AddFolder(names_.SoundFolder());
        LimitSounds([this] { WriteWaves(*group_, names_.SoundFolder(), set_.Samples); });
        context_.Result.NumSamples = set_.Samples.size();
        context_.Result.MissingSamples = set_.MissingSamples;
        if (set_.MissingSamples != 0)
            report_.LogLine("Samples that do not exist and get no WAV file: " +
                            std::to_string(set_.MissingSamples));
    }

    /// The level's own sprites where the user asked for them, else the default file.
    bool WriteSprites()
    {
        report_.LogLine("Writing SWD file");
        if (set_.Sprites) {
            WriteFile(names_.With("swd"),
                      [this](OutputFile& file) { WriteSwd(file, set_, status_); });
            return true;
        }
        const bool copied = CopyDefault("swd");
        status_.Stage("Writing WAS", 95);
        return copied;
    }

    void WriteList()
    {
        report_.LogLine("Writing WAS file");
        TextLines file;
        file.Open(group_->DraftOf(names_.With("was")), names_.With("was"));
        WriteWas(file, set_);
        status_.Prog(100);
        file.Close();
    }

    const std::string& fileName_;
    SetNames names_;
    const LevelData& level_;
    const SaveContext& context_;
    Reporter& report_;
    SaveScope& scope_;
    SaveStatus status_;
    ObjectSet set_;
    std::optional<FileGroup> group_; ///< the files on their way
};

} // namespace

bool SaveWAD(const std::string& fileName, const LevelData& level, const SaveContext& context)
{
    context.Result = {};
    if (!EndsWithNoCase(fileName, kExtension)) {
        context.Report.Message("You must save it as a was file");
        return false;
    }
    for (const std::string& name : {FileTitle(fileName), context.LevelTitle})
        if (HasLineBreak(name)) {
            context.Report.Message("A name with a line break can't stand in the list of a set: " +
                                   Printable(name));
            return false;
        }
    const MessageScope messages(context.Report);
    SaveScope scope(context.Report);
    try {
        return Saver(fileName, level, context, scope).Run();
    } catch (const FileFailure& failure) {
        context.Report.Message(failure.what());
        context.Result.Refusal = failure;
        return false;
    } catch (const Interrupted& stop) {
        context.Report.LogLine(stop.what());
        return false;
    }
}

} // namespace morlik
