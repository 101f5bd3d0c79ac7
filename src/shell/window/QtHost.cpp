#include "shell/window/QtHost.h"

#include "platform/Platform.h"
#include "shell/window/Text.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

namespace morlik
{

namespace
{

/// Where a dialog starts: its folder, or where the system chooses if there is no such folder, as
/// with the first settings on a system without drive letters. Qt would take it for a file's name.
/// A stored text may end in a terminator, which no name holds.
QString StartFolder(const FileDialog& dialog)
{
    const auto stored = dialog.Folder.substr(0, dialog.Folder.find('\0'));
    const QString folder = QDir::fromNativeSeparators(FromPathText(stored));
    return QFileInfo(folder).isDir() ? folder : QString();
}

void Take(FileDialog& dialog, const QString& chosen)
{
    if (!chosen.isEmpty())
        dialog.FileName = ToPathText(QDir::toNativeSeparators(chosen));
}

} // namespace

void QtHost::Attach(QMainWindow& window, MainControls& controls)
{
    window_ = &window;
    controls_ = &controls;
}

void QtHost::ShowMessage(const std::string& text, const std::string& title)
{
    ShowBox(text, title, {});
}

void QtHost::ShowFailure(const std::string& text, const std::string& title,
                         const std::string& detail)
{
    ShowBox(text, title, detail);
}

void QtHost::ShowBox(const std::string& text, const std::string& title, const std::string& detail)
{
    if (QApplication::instance() == nullptr) { // of a log that can't be opened
        ShowLastMessage(text, title);
        return;
    }
    QMessageBox box(QMessageBox::NoIcon, FromText(title), FromText(text), QMessageBox::Ok, window_);
    box.setTextFormat(Qt::PlainText);
    if (!detail.empty()) // the toolkit takes this text for HTML where it looks like it
        box.setInformativeText("<p>" + FromText(detail).toHtmlEscaped() + "</p>");
    box.exec();
}

void QtHost::ShowHint(const std::string& text)
{
    if (controls_ != nullptr)
        controls_->TellFoot(FromText(text), window_->width());
}

/// What can't be undone isn't done by the Enter key alone.
bool QtHost::Ask(const std::string& question, const std::string& title)
{
    QMessageBox box(QMessageBox::NoIcon, FromText(title), FromText(question),
                    QMessageBox::Yes | QMessageBox::No, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void QtHost::ShowOpen(FileDialog& dialog)
{
    Take(dialog, QFileDialog::getOpenFileName(window_, "Open", StartFolder(dialog),
                                              QtFilter(dialog.Filter)));
}

void QtHost::ShowSave(FileDialog& dialog)
{
    Take(dialog, QFileDialog::getSaveFileName(window_, "Save As", StartFolder(dialog),
                                              QtFilter(dialog.Filter)));
}

void QtHost::SetEvent(const std::string& text)
{
    controls_->Event->setText(FromText(text));
}

void QtHost::SetProg(float percent)
{
    controls_->Prog->setValue(static_cast<int>(percent));
}

void QtHost::GiveTurn()
{
    QApplication::processEvents();
}

bool QtHost::StopRequested() const
{
    const bool isPressed = !controls_->Stop->isHidden() && controls_->Stop->isChecked();
    return isPressed || InterruptScope::IsRequested();
}

std::string QtHost::Caption() const
{
    return ToPathText(window_->windowTitle());
}

void QtHost::SetCaption(const std::string& text)
{
    window_->setWindowTitle(FromText(text));
}

void QtHost::Beep()
{
    QApplication::beep();
}

void QtHost::OpenWebAddress(const std::string& address)
{
    QDesktopServices::openUrl(QUrl(FromText(address)));
}

bool QtHost::SkyFix() const
{
    return controls_->SkyFix->isChecked();
}

bool QtHost::ExpSpr() const
{
    return controls_->ExpSpr->isChecked();
}

std::filesystem::path QtHost::ProgramFolder() const
{
    return morlik::ProgramFolder();
}

std::filesystem::path QtHost::StateFolder() const
{
    return morlik::StateFolder();
}

std::string QtHost::ShortDate() const
{
    return morlik::ShortDate();
}

QString QtFilter(const std::string& filter)
{
    const QStringList pieces = FromText(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        QString description = pieces[i];
        description = description.section('(', 0, 0).trimmed();
        QString patterns = pieces[i + 1];
        filters << description + " (" + patterns.replace(';', ' ') + ")";
    }
    return filters.join(";;");
}

} // namespace morlik
