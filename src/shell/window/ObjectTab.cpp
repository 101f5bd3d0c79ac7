#include "shell/window/ObjectTab.h"

#include "base/Text.h"
#include "picture/Scene.h"
#include "shell/window/Text.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

namespace morlik
{

namespace
{

constexpr int kFramesPerSecond = 30;
constexpr int kMillisecondsPerTick = 1000 / kFramesPerSecond;
constexpr double kSector = 1024; ///< world units

QPushButton* MakeButton(const char* name, const QString& caption, const QString& tip)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRepeat(true);
    return button;
}

QString Counted(std::size_t count, const char* one, const char* more)
{
    return FromText(Grouped(count)) + " " + (count == 1 ? one : more);
}

/// Frame numbers that an animation has.
int NumFramesOf(const ModelAnimation& animation)
{
    return animation.NumFrames == 0 ? 1
                                    : animation.Record.FrameEnd - animation.Record.FrameStart + 1;
}

} // namespace

ObjectTab::ObjectTab() : view_(new ObjectView("ObjectView"))
{
    setObjectName("ObjectTab");
    facts_ = new QLabel;
    facts_->setObjectName("ObjectFacts");
    facts_->setTextFormat(Qt::PlainText);
    facts_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(view_, 1);
    column->addWidget(facts_);
    column->addLayout(MakeAnimations());
    Connect();
    ShowText("Select an object to see it");
}

QLayout* ObjectTab::MakeAnimations()
{
    constexpr int kListHeight = 110;
    animations_ = new QListWidget;
    animations_->setObjectName("AnimList");
    animations_->setAccessibleName("Animations");
    animations_->setMaximumHeight(kListHeight);
    frame_ = new QSlider(Qt::Horizontal);
    frame_->setObjectName("AnimFrame");
    frame_->setAccessibleName("Frame");
    place_ = new QLabel;
    place_->setObjectName("AnimPlace");
    wireframe_ = new QCheckBox("&Wireframe");
    wireframe_->setObjectName("Wireframe");
    withSound_ = new QCheckBox("With &sound");
    withSound_->setObjectName("AnimSound");
    withSound_->setToolTip("Play the sounds of the animation with it");
    auto* controls = new QVBoxLayout;
    controls->addLayout(MakeButtons());
    controls->addWidget(frame_);
    controls->addWidget(place_);
    controls->addWidget(wireframe_);
    controls->addWidget(withSound_);
    controls->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addWidget(animations_, 1);
    row->addLayout(controls, 1);
    return row;
}

QLayout* ObjectTab::MakeButtons()
{
    back_ = MakeButton("AnimBack", "<", "Back by a frame");
    play_ = MakeButton("AnimPlay", "Play", "Play the animation");
    play_->setCheckable(true);
    play_->setAutoRepeat(false);
    forward_ = MakeButton("AnimForward", ">", "On by a frame");
    auto* row = new QHBoxLayout;
    row->addWidget(back_);
    row->addWidget(play_, 1);
    row->addWidget(forward_);
    return row;
}

void ObjectTab::Connect()
{
    timer_.setInterval(kMillisecondsPerTick);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { Tick(); });
    connect(animations_, &QListWidget::currentRowChanged, this,
            [this](int row) { ShowAnimation(row); });
    connect(frame_, &QSlider::valueChanged, this, [this](int frame) { ShowFrame(frame); });
    connect(back_, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(forward_, &QPushButton::clicked, this, [this] { Step(1); });
    connect(play_, &QPushButton::toggled, this, [this](bool isOn) { Play(isOn); });
    connect(withSound_, &QCheckBox::toggled, this, [this] { sounds_.Stop(); });
    connect(wireframe_, &QCheckBox::toggled, view_,
            [this](bool isOn) { view_->SetWireframe(isOn); });
}

void ObjectTab::ShowText(const QString& text)
{
    object_.reset();
    play_->setChecked(false);
    FillAnimations();
    facts_->clear();
    place_->clear();
    view_->ShowText(text);
}

void ObjectTab::Show(const ShownObject& object, bool isStatic)
{
    try {
        model_ = isStatic ? ModelOfStaticMesh(object.In->Set, object.Place)
                          : ModelOfMoveable(object.In->Set, object.Place);
        range_ = isStatic ? AnimationRange() : AnimationsOf(object.In->Set, object.Place);
        object_.emplace(object);
        isStatic_ = isStatic;
        FillAnimations();
        ShowAnimation(animations_->currentRow());
        if (object_)
            view_->FrameAnew();
        TellFacts();
    } catch (const ReadFailure& damage) {
        ShowText(QString("This object is damaged: ") + damage.what());
    }
}

void ObjectTab::FillAnimations()
{
    const QSignalBlocker quiet(animations_);
    animations_->clear();
    const std::size_t count = object_ ? range_.Count : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Animation& record = object_->In->Set.Animations[range_.First + i];
        animations_->addItem(QString("%1: state %2").arg(i).arg(record.State));
    }
    if (count > 0)
        animations_->setCurrentRow(0);
    for (QWidget* control :
         std::initializer_list<QWidget*>{animations_, back_, play_, forward_, frame_, place_})
        control->setEnabled(count > 0);
}

/// Without an animation, the object as it stands.
void ObjectTab::ShowAnimation(int number)
{
    if (!object_)
        return;
    int frames = 1;
    try {
        if (number >= 0)
            frames = NumFramesOf(
                AnimationOf(object_->In->Set, range_, static_cast<std::size_t>(number)));
    } catch (const ReadFailure&) {
        // the frame tells it
    }
    const QSignalBlocker quiet(frame_);
    frame_->setRange(0, std::max(frames - 1, 0));
    frame_->setValue(0);
    startedAt_ = 0;
    clock_.restart();
    ShowFrame(0);
    if (timer_.isActive())
        TakeSounds();
}

std::vector<Transform> ObjectTab::PlacesIn(int frame) const
{
    if (isStatic_)
        return std::vector<Transform>(1);
    const int animation = std::max(animations_->currentRow(), 0);
    return TransformsAt(object_->In->Set, object_->Place, model_.Joints,
                        {static_cast<std::size_t>(animation), static_cast<std::size_t>(frame)});
}

void ObjectTab::ShowFrame(int number)
{
    if (!object_)
        return;
    try {
        view_->Show(SceneOf(object_->In->Set, model_, PlacesIn(number)), object_->In->Textures);
    } catch (const ReadFailure& damage) {
        view_->ShowText(QString("This animation is damaged: ") + damage.what());
    }
    place_->setText(range_.Count == 0
                        ? QString("No animations")
                        : QString("Frame %1 of %2").arg(number).arg(frame_->maximum()));
}

/// Steps stop at the ends; a play goes around.
void ObjectTab::Step(int frames)
{
    play_->setChecked(false);
    frame_->setValue(frame_->value() + frames);
}

void ObjectTab::Play(bool isOn)
{
    play_->setText(isOn ? "Pause" : "Play");
    if (!isOn || !object_) {
        timer_.stop();
        sounds_.Stop();
        return;
    }
    startedAt_ = frame_->value();
    clock_.restart();
    timer_.start();
    TakeSounds();
}

/// The frame by the clock, so that a slow machine leaves frames out and keeps the speed.
void ObjectTab::Tick()
{
    const qint64 passed = clock_.elapsed() * kFramesPerSecond / 1000;
    const int before = frame_->value();
    frame_->setValue(static_cast<int>((startedAt_ + passed) % (frame_->maximum() + 1)));
    const int now = frame_->value();
    if (now >= before) {
        PlaySounds(before, now);
    } else { // it has gone around
        PlaySounds(before, frame_->maximum());
        PlaySounds(-1, now);
    }
}

void ObjectTab::SetSounds(SoundsOf soundsOf, std::function<void(const QString&)> tell)
{
    soundsOf_ = std::move(soundsOf);
    tell_ = std::move(tell);
}

/// Those of the frame on view come at once.
void ObjectTab::TakeSounds()
{
    const int number = animations_->currentRow();
    if (!object_ || !soundsOf_ || number < 0)
        return;
    const auto animation = static_cast<std::size_t>(number);
    firstFrame_ = object_->In->Set.Animations[range_.First + animation].FrameStart;
    sounds_.Take(soundsOf_(animation));
    PlaySounds(frame_->value() - 1, frame_->value());
}

void ObjectTab::PlaySounds(int before, int now)
{
    if (!withSound_->isChecked() || sounds_.Pass(firstFrame_ + before, firstFrame_ + now))
        return;
    withSound_->setChecked(false);
    tell_("No sound can be played: " + QString::fromStdString(sounds_.Error()));
}

void ObjectTab::TellFacts()
{
    if (!object_)
        return;
    std::size_t faces = 0;
    std::set<std::uint16_t> textures;
    for (const MeshGeometry& mesh : model_.Meshes) {
        faces += mesh.Faces.size();
        for (const GeometryFace& face : mesh.Faces)
            if (!face.IsColour)
                textures.insert(face.Texture);
    }
    std::size_t frames = 0;
    for (std::size_t i = 0; i < range_.Count; ++i) {
        const Animation& record = object_->In->Set.Animations[range_.First + i];
        frames += static_cast<std::size_t>(std::max(record.FrameEnd - record.FrameStart + 1, 0));
    }
    facts_->setText(Counted(model_.Meshes.size(), "mesh", "meshes") + ", " +
                    Counted(faces, "face", "faces") + ", " +
                    Counted(textures.size(), "texture", "textures") + ", " +
                    Counted(frames, "frame", "frames") + SizeText());
}

/// Of the object in its first frame; nothing for one without vertices, or with a damaged frame.
QString ObjectTab::SizeText() const
{
    try {
        const auto bounds = BoundsOf(model_, PlacesIn(0));
        if (!bounds)
            return {};
        const auto side = [](double from, double to) {
            return QString::number((to - from) / kSector, 'f', 2);
        };
        return QString("; %1 \u00d7 %2 \u00d7 %3 sectors")
            .arg(side(bounds->Least.X, bounds->Greatest.X),
                 side(bounds->Least.Y, bounds->Greatest.Y),
                 side(bounds->Least.Z, bounds->Greatest.Z));
    } catch (const ReadFailure&) {
        return {};
    }
}

void ObjectTab::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        if (play_->isEnabled())
            play_->toggle();
        return;
    case Qt::Key_Comma:
        return Step(-1);
    case Qt::Key_Period:
        return Step(1);
    case Qt::Key_W:
        return wireframe_->toggle();
    default:
        QWidget::keyPressEvent(event);
    }
}

void ObjectTab::hideEvent(QHideEvent* event)
{
    play_->setChecked(false);
    QWidget::hideEvent(event);
}

} // namespace morlik
