#pragma once

#include "model/Animations.h"
#include "playback/AnimationPlayer.h"
#include "shell/ShownObjects.h"
#include "shell/window/ObjectView.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <functional>

namespace morlik
{

/// The object that is selected, with its animations. Space plays and pauses, "," and "." step by a
/// frame, W draws it as wires.
class ObjectTab : public QWidget
{
public:
    ObjectTab();

    /// Shows an object; a damaged one by its damage. What it refers to must stay until the next
    /// call.
    void Show(const ShownObject& object, bool isStatic);
    /// The sounds of an animation by its number among the object's own, and where it is told that
    /// they can't be played. They are asked for when they are to be played.
    using SoundsOf = std::function<std::vector<SoundAt>(std::size_t animation)>;
    void SetSounds(SoundsOf soundsOf, std::function<void(const QString&)> tell);
    /// Shows why there is no object.
    void ShowText(const QString& text);

    QImage Image() { return view_->Image(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QLayout* MakeAnimations();
    QLayout* MakeButtons();
    void Connect();

    void FillAnimations();
    void ShowAnimation(int number);
    void ShowFrame(int number);
    /// Where the meshes lie in a frame of the animation that is selected. `ReadFailure` if it is
    /// damaged.
    std::vector<Transform> PlacesIn(int frame) const;
    void Step(int frames);
    void Play(bool isOn);
    void Tick();
    void TakeSounds();
    /// Plays the sounds of the frames behind `before`, up to `now`, where they are wanted.
    void PlaySounds(int before, int now);
    void TellFacts();
    QString SizeText() const;

    ObjectView* view_;
    QListWidget* animations_;
    QPushButton* back_;
    QPushButton* play_;
    QPushButton* forward_;
    QSlider* frame_;
    QLabel* place_; ///< number of the frame
    QCheckBox* wireframe_;
    QCheckBox* withSound_;
    QLabel* facts_;

    std::optional<ShownObject> object_;
    bool isStatic_ = false;
    Model model_;
    AnimationRange range_;

    SoundsOf soundsOf_;
    std::function<void(const QString&)> tell_;
    AnimationPlayer sounds_;
    int firstFrame_ = 0; ///< its number in the animation whose sounds were taken

    QTimer timer_;
    QElapsedTimer clock_;
    int startedAt_ = 0; ///< frame at which the clock began
};

} // namespace morlik
