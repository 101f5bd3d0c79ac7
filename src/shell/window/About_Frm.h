#pragma once

#include "base/Host.h"

#include <QLabel>
#include <QWidget>
#include <functional>

namespace morlik
{

/// The About window: version, features and the way to the project's web site.
class About_Frm : public QWidget
{
public:
    /// `onClose` is called when the window goes.
    About_Frm(Host& host, std::function<void()> onClose);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLabel* AddLabel(const char* name, const QString& text, double points, bool bold,
                     const char* colour);

    Host& host_;
    std::function<void()> onClose_;
    QLabel* address_ = nullptr;
};

} // namespace morlik
