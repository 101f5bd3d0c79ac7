#pragma once

#include <QString>

namespace morlik
{

/// The libraries that the program is built with and their versions, such as "Qt 6.4.2, SDL 2.26.5".
QString LibraryVersions();

} // namespace morlik
