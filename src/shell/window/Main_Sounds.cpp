// The sound list: what a click shows, how a sound is played, and the commands that save sounds.

#include "base/OutputFile.h"
#include "base/SampleLookup.h"
#include "base/Text.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

namespace morlik
{

namespace
{

constexpr const char* kWavFilter = "wav files(*.wav)|*.wav";

} // namespace

std::optional<std::span<const std::byte>> Main_Frm::SelectedSound() const
{
    const auto selected = controls_.SndLst->selectedItems();
    if (selected.isEmpty())
        return std::nullopt;
    const int number = selected[0]->data(Qt::UserRole).toInt();
    if (session_.State.LevelVersion == kMainSFXVersion)
        return session_.MainSFX.WaveOf(&number).value_or(std::span<const std::byte>());
    const Sample* sample = FindIn(session_.Level.Samples, number);
    return sample != nullptr ? sample->Data : std::span<const std::byte>();
}

void Main_Frm::SndLst_Click()
{
    controls_.SndView->Show(SelectedSound().value_or(std::span<const std::byte>()));
}

void Main_Frm::PlaySound()
{
    if (SelectedSound())
        TellFoot(controls_.SndView->Play());
    else
        Refuse("Select a sound to play it");
}

void Main_Frm::SndSave_Click()
{
    const auto bytes = SelectedSound();
    if (!bytes) {
        Refuse("Select the sound that is to be saved");
        return;
    }
    const auto name = controls_.SndLst->selectedItems()[0]->data(kNameRole).toString();
    if (!AskToSave(kWavFilter, ToPathText(name + ".wav"), "") ||
        !MayReplace({session_.FMSave.FileName}))
        return;
    if (bytes->empty())
        session_.Report.LogLine("The sound has no sample: the WAV file is empty");
    try {
        WriteWholeFile(session_.FMSave.FileName, *bytes);
        TellFoot("Saved " + FromPathText(session_.FMSave.FileName));
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
        TellFoot("Nothing was saved");
    }
}

void Main_Frm::SndSaveAll_Click()
{
    const bool ofMainSFX = session_.State.LevelVersion == kMainSFXVersion;
    if (!AskToSave(kWavFilter, ofMainSFX ? "main.wav" : LevelStem() + ".wav", ""))
        return;
    const std::string& path = session_.FMSave.FileName;
    const auto base = path.substr(0, path.find('.'));
    const auto files = PathsOf(ofMainSFX ? MainSFXSoundFiles(base, session_.MainSFX)
                                         : LevelSoundFiles(base, session_.Level));
    if (!MayReplace(files))
        return;
    const auto folder = FromPathText(path.substr(0, LastFolderEnd(base)));
    SaveSounds(files.empty() ? QString("Nothing was saved: there are no sounds")
                             : QString("Saved %1 sounds into %2").arg(files.size()).arg(folder),
               [&] {
                   return ofMainSFX ? WriteMainSFXSounds(base, session_.MainSFX, session_.Report)
                                    : WriteLevelSounds(base, session_.Level, session_.Report);
               });
}

void Main_Frm::SaveSounds(const QString& done, const std::function<bool()>& write)
{
    try {
        bool complete = false;
        WorkToStop([&] { complete = write(); });
        TellFoot(complete ? done : QString("Not all was saved"));
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
        TellFoot("Not all was saved");
    }
}

} // namespace morlik
