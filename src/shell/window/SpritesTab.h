#pragma once

#include "picture/TexturePixels.h"
#include "set/ObjectSet.h"

#include <QListWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <memory>

namespace morlik
{

/// The sprites of a level, a picture for each sequence.
class SpritesTab : public QWidget
{
public:
    SpritesTab();

    /// Shows the sprites of a set, or none; they must stay until the next call. `names` has one for
    /// each sequence.
    void Show(const SpriteTables* sprites, const QStringList& names);

    QImage Image();

private:
    /// Draws the next picture, in a pause of the window system.
    void DrawNext();

    const SpriteTables* sprites_ = nullptr;
    std::unique_ptr<TexturePixels> textures_;
    int next_ = 0; ///< row that is drawn next
    QListWidget* list_;
    QTimer timer_;
};

} // namespace morlik
