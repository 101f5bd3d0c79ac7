#include "shell/window/SoundView.h"

#include "base/Bytes.h"
#include "playback/Decode.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

namespace morlik
{

namespace
{

constexpr int kFrameTime = 33; ///< milliseconds from one place to the next

/// A line for each column, from the highest to the lowest value of all channels in it. It reaches
/// to the first value of the next column, so that there are no gaps.
QList<QLine> ColumnsOf(const DecodedWave& wave, const QSize& size)
{
    const auto columns = static_cast<std::size_t>(size.width());
    const auto channels = static_cast<std::size_t>(wave.Channels);
    const auto rowOf = [&size](std::int16_t value) {
        return static_cast<int>((0x7fff - value) * std::int64_t{size.height()} / 0x10000);
    };
    QList<QLine> lines;
    for (std::size_t x = 0; x < columns; ++x) {
        const std::size_t first = x * wave.Frames() / columns;
        const std::size_t last = std::min((x + 1) * wave.Frames() / columns, wave.Frames() - 1);
        const auto values =
            std::span(wave.Values).subspan(first * channels, (last - first + 1) * channels);
        const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
        const int at = static_cast<int>(x);
        lines.append({at, rowOf(*greatest), at, rowOf(*least)});
    }
    return lines;
}

} // namespace

WaveView::WaveView()
{
    constexpr int kHeight = 48;
    setObjectName("SndWave");
    setFixedHeight(kHeight);
    setAccessibleName("Wave of the sound");
}

void WaveView::SetWave(std::optional<DecodedWave> wave)
{
    wave_ = std::move(wave);
    place_.reset();
    columns_ = wave_ ? ColumnsOf(*wave_, size()) : QList<QLine>();
    update();
}

void WaveView::SetPlace(std::optional<double> seconds)
{
    place_ = seconds;
    update();
}

void WaveView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (wave_)
        columns_ = ColumnsOf(*wave_, size());
}

void WaveView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawLines(columns_);
    if (wave_ && place_) {
        const int x = static_cast<int>(*place_ / wave_->Seconds() * width());
        painter.fillRect(x, 0, 2, height(), palette().highlight());
    }
}

SoundView::SoundView() : wave_(new WaveView), text_(new QLabel)
{
    text_->setObjectName("SndText");
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    text_->setMinimumHeight(2 * text_->fontMetrics().lineSpacing()); // so that the list stays
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(wave_);
    column->addWidget(text_);
    timer_.setObjectName("SndTimer");
    timer_.setInterval(kFrameTime);
    connect(&timer_, &QTimer::timeout, this, [this] { FollowPlace(); });
}

void SoundView::Show(std::span<const std::byte> file)
{
    Stop();
    wave_->SetWave({});
    text_->clear();
    whyNot_ = "The sound has no sample.";
    if (file.empty())
        return;
    try {
        wave_->SetWave(Decode(file));
        text_->setText(QString::fromStdString(Describe(ReadWaveInfo(file))));
    } catch (const ReadFailure& failure) {
        whyNot_ = QString("The sample can't be played: ") + failure.what();
        text_->setText("It can't be played.");
    }
}

QString SoundView::Play()
{
    if (!wave_->Wave())
        return whyNot_;
    if (!player_->Play(*wave_->Wave()))
        return "No sound can be played: " + QString::fromStdString(player_->Error());
    timer_.start();
    FollowPlace();
    return {};
}

void SoundView::Stop()
{
    player_->Stop();
    timer_.stop();
    wave_->SetPlace({});
}

void SoundView::FollowPlace()
{
    const auto place = player_->Place();
    if (place)
        wave_->SetPlace(place);
    else
        Stop();
}

} // namespace morlik
