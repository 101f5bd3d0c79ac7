#pragma once

#include <QLabel>
#include <QListWidget>
#include <QScrollArea>

namespace morlik
{

/// A list that says why nothing is in it, or nothing of it is to be seen.
class NotedList : public QListWidget
{
public:
    NotedList();

    /// What stands in the list while it has no entries.
    void SetNote(const QString& note);
    /// Hides the entries that do not hold `text`. The others keep their rows, which are their
    /// numbers in the level.
    void Filter(const QString& text);
    int NumShown() const;
    /// Makes the first entry that is to be seen the selected one.
    void SelectFirst();

protected:
    /// Where nothing is selected, the arrow keys begin at the first entry.
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString note_;
};

/// Height of the title that a window gets when it is shown, as far as one can tell before.
int TitleHeight(const QWidget& window);

/// Shows all of a part of the window where the screen has room for it, else what fits, with a bar
/// to see the rest.
class FittingArea : public QScrollArea
{
public:
    /// `around` is the height of what else the window has, with its title.
    FittingArea(QWidget* part, int around);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    int around_;
};

/// A line that is cut in its middle where there is no room for it; all of it is in the tool tip.
class FootLabel : public QLabel
{
public:
    FootLabel();

    void Tell(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Fit();

    QString whole_;
};

} // namespace morlik
