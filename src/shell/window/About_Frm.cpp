#include "shell/window/About_Frm.h"

#include "shell/Addresses.h"
#include "shell/window/Libraries.h"
#include "shell/window/ToolIcons.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace morlik
{

About_Frm::About_Frm(Host& host, std::function<void()> onClose)
    : host_(host), onClose_(std::move(onClose))
{
    setObjectName("About_Frm");
    setWindowTitle("MORLIK 1.7");
    setWindowIcon(ProgramIcon());
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint); // nothing that would make it larger
    QPalette black(palette());
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    setAutoFillBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    AddLabel("Label1", "MORLIK 1.7", 24, true, "red");
    AddLabel("Label3", "MORLIK 1.7 features:", 8.25, true, "red");
    AddLabel("Features", "- Exporting WAS files\n- Exporting TGA files\n- Exporting WAV files",
             8.25, false, "lime");
    AddLabel("Label6", "Planned new features", 8.25, true, "red");
    AddLabel("Features14",
             QString("currently there are no plans for MORLIK. If you have an idea, please mail "
                     "it to ") +
                 kMailAddress,
             8.25, false, "lime")
        ->setWordWrap(true);
    AddLabel("Label5", "Check for updates:", 13.5, true, "lime");
    address_ = AddLabel("Label4", QString("-  ") + kWebAddress + "  -", 13.5, true, "cyan");
    address_->setCursor(Qt::PointingHandCursor);
    address_->installEventFilter(this);
    AddLabel("Licence", "Free software under the MIT licence, made with", 8.25, true, "red");
    AddLabel("Libraries", LibraryVersions(), 8.25, false, "lime")->setWordWrap(true);
}

QLabel* About_Frm::AddLabel(const char* name, const QString& text, double points, bool bold,
                            const char* colour)
{
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    QFont font("MS Sans Serif");
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    font.setBold(bold);
    label->setFont(font);
    label->setStyleSheet(QString("color: %1").arg(colour));
    layout()->addWidget(label);
    return label;
}

void About_Frm::closeEvent(QCloseEvent* event)
{
    event->accept();
    onClose_();
}

bool About_Frm::eventFilter(QObject* object, QEvent* event)
{
    if (object == address_ && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        host_.OpenWebAddress(kWebAddress);
    return QWidget::eventFilter(object, event);
}

void About_Frm::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace morlik
