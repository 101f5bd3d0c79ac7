#include "shell/window/ListParts.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

namespace morlik
{

/// Long entries end in dots, and take no row for a bar; a wider column shows them whole.
NotedList::NotedList()
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
}

void NotedList::SetNote(const QString& note)
{
    note_ = note;
    viewport()->update();
}

void NotedList::Filter(const QString& text)
{
    for (int row = 0; row < count(); ++row) {
        const bool hidden = !item(row)->text().contains(text, Qt::CaseInsensitive);
        setRowHidden(row, hidden);
        if (hidden) // what can't be seen is not to be saved or renamed
            item(row)->setSelected(false);
    }
    viewport()->update();
}

int NotedList::NumShown() const
{
    int shown = 0;
    for (int row = 0; row < count(); ++row)
        shown += isRowHidden(row) ? 0 : 1;
    return shown;
}

void NotedList::SelectFirst()
{
    int row = 0;
    while (row < count() && isRowHidden(row))
        ++row;
    if (row < count())
        setCurrentRow(row);
}

void NotedList::keyPressEvent(QKeyEvent* event)
{
    const bool isArrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (isArrow && event->modifiers() == Qt::NoModifier && selectedItems().isEmpty())
        SelectFirst();
    else
        QListWidget::keyPressEvent(event);
}

void NotedList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (NumShown() != 0)
        return;
    constexpr int kMargin = 8;
    QPainter painter(viewport());
    QColor colour = palette().color(QPalette::Active, QPalette::Text);
    colour.setAlphaF(0.5); // to be read in a list that is off, too, on light and dark
    painter.setPen(colour);
    painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     count() == 0 ? note_ : QString("No entry holds the text of the filter"));
}

int TitleHeight(const QWidget& window)
{
    return window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

FittingArea::FittingArea(QWidget* part, int around) : around_(around)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(part);
}

QSize FittingArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize FittingArea::minimumSizeHint() const
{
    const QSize whole = widget()->minimumSizeHint();
    const int room = screen()->availableGeometry().height() - around_;
    if (whole.height() <= room)
        return whole;
    return {whole.width() + verticalScrollBar()->sizeHint().width(), room};
}

bool FittingArea::eventFilter(QObject* object, QEvent* event)
{
    if (object == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry(); // the part asks for another size
    return QScrollArea::eventFilter(object, event);
}

FootLabel::FootLabel()
{
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void FootLabel::Tell(const QString& text)
{
    whole_ = text;
    setToolTip(text.toHtmlEscaped());
    Fit();
}

void FootLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    Fit();
}

void FootLabel::Fit()
{
    setText(QFontMetrics(font()).elidedText(whole_, Qt::ElideMiddle, contentsRect().width()));
}

} // namespace morlik
