#include "tests/window/WindowRun.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>

namespace morlik::test
{

/// Looks at the box or dialog that `show` brings up, and closes it.
template <class Dialog>
void LookAt(const std::function<void()>& show, const std::function<void(Dialog&)>& look)
{
    bool came = false;
    QTimer::singleShot(0, [&] {
        QWidget* top = QApplication::activeModalWidget();
        if (auto* dialog = qobject_cast<Dialog*>(top)) {
            came = true;
            look(*dialog);
        }
        if (top != nullptr)
            top->close();
    });
    show();
    EXPECT_TRUE(came);
}

TEST(QtHostDialogs, StartInTheStoredFolderWithTheirFiltersAndGiveTheNameOfTheSystem)
{
    WindowRun run;
    const auto one = run.Folder.File("L\xc3\xb6we");
    const auto two = run.Folder.File("two");
    for (const auto& folder : {one, two})
        std::filesystem::create_directory(folder);
    // What other programs store may count the terminator.
    const std::vector<std::pair<std::string, std::string>> rows{
        {one + '\0', one}, {two + '\0' + "none", two}, {one, one}, {"C:\\none", two}, {"", two}};
    for (const auto& [stored, start] : rows) {
        FileDialog open{.Filter = "TR Levels|*.phd;*.tub|wav files(*.wav)|*.wav|"
                                  "TR2&3 Sound Data (main.sfx)|main.sfx|without patterns",
                        .Folder = stored,
                        .FileName = "last",
                        .Fallback = two};
        LookAt<QFileDialog>([&] { run.Host.QtHost::ShowOpen(open); },
                            [&, &from = start](QFileDialog& dialog) {
                                EXPECT_EQ(dialog.directory().path().toStdString(), from);
                                EXPECT_EQ(
                                    dialog.nameFilters(),
                                    (QStringList{"TR Levels (*.phd *.tub)", "wav files (*.wav)",
                                                 "TR2&3 Sound Data (main.sfx)"}));
                            });
        EXPECT_EQ(open.FileName, "last"); // a cancel
    }
    FileDialog save{.Filter = "WAS files (*.was)|*.was",
                    .Folder = two + '\0',
                    .Proposed = "a b.was",
                    .Ending = "was"};
    LookAt<QFileDialog>([&] { run.Host.QtHost::ShowSave(save); },
                        [&](QFileDialog& dialog) {
                            EXPECT_TRUE(dialog.selectedFiles().value(0).endsWith("/a b.was"));
                            dialog.selectFile(QString::fromUtf8("\xc3\xa4"));
                            static_cast<QDialog&>(dialog).accept();
                        });
    EXPECT_EQ(save.FileName, two + "/\xc3\xa4.was");
}

TEST(QtHostTexts, ShowWesternNamesAndPathsAlike)
{
    WindowRun run;
    const std::vector<std::pair<std::string, std::string>> rows{
        // as given, and in UTF-8
        {"animations from the L\xf6we", "animations from the L\xc3\xb6we"},
        {"Can't open /L\xc3\xb6we/\xe4\xb8\xad.tr4", "Can't open /L\xc3\xb6we/\xe4\xb8\xad.tr4"},
        {"<b>Caf\xe9", "<b>Caf\xc3\xa9"},
        // The last two letters alone would be a letter in UTF-8.
        {"\xabMEN\xdc\xbb", "\xc2\xabMEN\xc3\x9c\xc2\xbb"}};
    for (const auto& row : rows) {
        const auto& text = row.first;
        const auto& shown = row.second;
        LookAt<QMessageBox>([&] { run.Host.QtHost::ShowMessage(text, text + "!"); },
                            [&](QMessageBox& box) {
                                EXPECT_EQ(box.text().toStdString(), shown);
                                EXPECT_EQ(box.textFormat(), Qt::PlainText);
                                EXPECT_EQ(box.windowTitle().toStdString(), shown + "!");
                            });
        run.Host.SetCaption(text);
        EXPECT_EQ(run.Window->windowTitle().toStdString(), shown);
        run.Host.SetCaption(run.Host.Caption()); // as a save puts it back
        EXPECT_EQ(run.Window->windowTitle().toStdString(), shown);
        run.Host.SetEvent(text);
        EXPECT_EQ(run.Label("Event").toStdString(), shown);
    }
    LookAt<QMessageBox>([&] { run.Host.QtHost::ShowFailure("Damaged", "", "offset 3: <b> L\xf6"); },
                        [&](QMessageBox& box) {
                            EXPECT_EQ(box.text(), "Damaged");
                            EXPECT_EQ(box.informativeText().toStdString(),
                                      "<p>offset 3: &lt;b&gt; L\xc3\xb6</p>");
                        });
}

TEST(QtHostDialogs, TakeEnterAndTheCloseButtonForANo)
{
    WindowRun run;
    const std::vector<std::pair<std::function<void(QMessageBox&)>, bool>> rows{
        {[](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }, false},
        {[](QMessageBox& box) { box.close(); }, false},
        {[](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); }, true}};
    for (const auto& [answer, isYes] : rows) {
        bool said = !isYes;
        LookAt<QMessageBox>([&] { said = run.Host.QtHost::Ask("Replace <b>them?", "MORLIK"); },
                            answer);
        EXPECT_EQ(said, isYes);
    }
}

} // namespace morlik::test
