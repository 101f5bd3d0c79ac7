#include "shell/window/QtHost.h"

#include "platform/Platform.h"
#include "shell/window/Text.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QThread>
#include <QUrl>
#include <QWindow>

namespace morlik
{

namespace
{

/// Where a dialog starts: its folder, or the one it would fall back to, or the user's own. What is
/// stored may be a folder that isn't there, as with the first settings on a system without drive
/// letters, and may end in a terminator, which no name holds.
QString StartFolder(const FileDialog& dialog)
{
    for (const std::string& stored : {dialog.Folder, dialog.Fallback}) {
        const auto name = stored.substr(0, stored.find('\0'));
        QString folder = QDir::fromNativeSeparators(FromPathText(name));
        if (QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

void Take(FileDialog& dialog, const QString& chosen)
{
    if (!chosen.isEmpty())
        dialog.FileName = ToPathText(QDir::toNativeSeparators(chosen));
}

/// Lets a window that was just shown take its place on the screen, so that what comes first opens
/// over it.
void AwaitScreen(const QWidget& window)
{
    constexpr int kMilliseconds = 250;
    const QDeadlineTimer patience(kMilliseconds);
    while (!window.windowHandle()->isExposed() && !patience.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(2);
    }
}

} // namespace

void QtHost::Attach(QMainWindow& window, MainControls& controls)
{
    window_ = &window;
    controls_ = &controls;
}

/// What a box or a dialog opens over; without a window that is shown, in the middle of the screen.
QWidget* QtHost::Parent() const
{
    if (window_ == nullptr || !window_->isVisible())
        return nullptr;
    AwaitScreen(*window_);
    return window_;
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
    QMessageBox box(QMessageBox::NoIcon, FromText(title), FromText(text), QMessageBox::Ok,
                    Parent());
    box.setTextFormat(Qt::PlainText);
    if (!detail.empty()) // the toolkit takes this text for HTML where it looks like it
        box.setInformativeText("<p>" + FromText(detail).toHtmlEscaped() + "</p>");
    box.exec();
}

void QtHost::ShowHint(const std::string& text)
{
    if (controls_ != nullptr)
        controls_->Foot->Tell(FromText(text));
}

/// What can't be undone isn't done by the Enter key alone.
bool QtHost::Ask(const std::string& question, const std::string& title)
{
    QMessageBox box(QMessageBox::NoIcon, FromText(title), FromText(question),
                    QMessageBox::Yes | QMessageBox::No, Parent());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void QtHost::ShowOpen(FileDialog& dialog)
{
    Take(dialog, QFileDialog::getOpenFileName(Parent(), "Open", StartFolder(dialog),
                                              QtFilter(dialog.Filter)));
}

void QtHost::ShowSave(FileDialog& dialog)
{
    QFileDialog box(Parent(), "Save As", StartFolder(dialog), QtFilter(dialog.Filter));
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setFileMode(QFileDialog::AnyFile);
    box.setDefaultSuffix(FromText(dialog.Ending));
    box.selectFile(FromPathText(dialog.Proposed));
    if (box.exec() == QDialog::Accepted)
        Take(dialog, box.selectedFiles().value(0));
}

void QtHost::ShowFolder(FileDialog& dialog)
{
    Take(dialog, QFileDialog::getExistingDirectory(Parent(), "Save Into", StartFolder(dialog)));
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
