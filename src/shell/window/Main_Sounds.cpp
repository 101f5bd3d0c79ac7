// The sound list: what a click shows, how a sound is played, and the commands that save sounds.

#include "base/OutputFile.h"
#include "base/SampleLookup.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QScopeGuard>

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
        host_.Beep();
}

void Main_Frm::SndSave_Click()
{
    const auto bytes = SelectedSound();
    if (!bytes) {
        host_.Beep();
        return;
    }
    if (!AskToSave(kWavFilter) || !MayReplace({session_.FMSave.FileName}))
        return;
    if (bytes->empty())
        session_.Report.LogLine("The sound has no sample: the WAV file is empty");
    SaveSounds([&] {
        WriteWholeFile(session_.FMSave.FileName, *bytes);
        return true;
    });
}

void Main_Frm::SndSaveAll_Click()
{
    if (!AskToSave(kWavFilter))
        return;
    const std::string& path = session_.FMSave.FileName;
    const auto base = path.substr(0, path.find('.'));
    const bool ofMainSFX = session_.State.LevelVersion == kMainSFXVersion;
    if (!MayReplace(PathsOf(ofMainSFX ? MainSFXSoundFiles(base, session_.MainSFX)
                                      : LevelSoundFiles(base, session_.Level))))
        return;
    SaveSounds([&] {
        return ofMainSFX ? WriteMainSFXSounds(base, session_.MainSFX, session_.Report)
                         : WriteLevelSounds(base, session_.Level, session_.Report);
    });
}

void Main_Frm::SaveSounds(const std::function<bool()>& write)
{
    try {
        bool complete = false;
        controls_.Stop->setChecked(false);
        controls_.Stop->show();
        const QScopeGuard hide([this] { controls_.Stop->hide(); });
        Work([&] { complete = write(); });
        TellFoot(complete ? "Saved " + FromPathText(session_.FMSave.FileName)
                          : QString("Not all was saved."));
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
    }
}

} // namespace morlik
