#include "shell/window/Libraries.h"

#include "level/Compressed.h"
#include "picture/MovingFile.h"
#include "picture/PNG.h"
#include "playback/Player.h"

#include <QStringList>

namespace morlik
{

QString LibraryVersions()
{
    QStringList names{QString("Qt ") + qVersion()};
    for (const std::string& name :
         {PlayerLibrary(), InflateLibraries(), PNGLibrary(), WebPLibrary()})
        if (!name.empty())
            names << QString::fromStdString(name);
    names << "TinyGLTF"
          << "JSON for Modern C++";
    return names.join(", ");
}

} // namespace morlik
