#pragma once

#include <QSettings>
#include <QStringList>

namespace morlik
{

/// The files that were opened last, newest first, kept in the user's settings.
class RecentFiles
{
public:
    explicit RecentFiles(QSettings& store) : store_(store) {}

    /// No more than are kept: a settings file may hold any number.
    QStringList List() const { return store_.value(kKey).toStringList().mid(0, kMost); }

    void Add(const QString& path)
    {
        QStringList files = List();
        files.removeAll(path);
        files.prepend(path);
        store_.setValue(kKey, QStringList(files.mid(0, kMost)));
    }

    void Remove(const QString& path)
    {
        QStringList files = List();
        files.removeAll(path);
        store_.setValue(kKey, files);
    }

private:
    static constexpr const char* kKey = "window/recent";
    static constexpr int kMost = 20;

    QSettings& store_;
};

} // namespace morlik
