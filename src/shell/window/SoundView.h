#pragma once

#include "playback/Player.h"

#include <QLabel>
#include <QLine>
#include <QList>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <span>

namespace morlik
{

/// A sound as its wave, the lowest and the highest value in each column, with the place that plays.
class WaveView : public QWidget
{
public:
    WaveView();

    /// Shows another sound, or none.
    void SetWave(std::optional<DecodedWave> wave);
    /// The place in seconds; nothing hides it.
    void SetPlace(std::optional<double> seconds);
    const std::optional<DecodedWave>& Wave() const { return wave_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::optional<DecodedWave> wave_;
    QList<QLine> columns_; ///< the wave at the size of the widget
    std::optional<double> place_;
};

/// The sound that is selected: what it is, its wave, and how it is played.
class SoundView : public QWidget
{
public:
    SoundView();

    /// Shows the sound of a WAV file, and stops the one before; an empty file shows nothing.
    void Show(std::span<const std::byte> file);
    /// Plays it from its beginning. Gives why that is not possible; empty where it is.
    QString Play();
    void Stop();

private:
    void FollowPlace();

    std::unique_ptr<Player> player_ = MakePlayer();
    WaveView* wave_;
    QLabel* text_;
    QTimer timer_{this}; ///< runs while it plays
    QString whyNot_;     ///< why the sound can't be played, where there is none to show
};

} // namespace morlik
