#include "model/ProgramVersion.h"

namespace tessaly {

QString programVersion()
{
    return QStringLiteral(TESSALY_VERSION);
}

QString programVersionAndBuild()
{
    return QStringLiteral(TESSALY_VERSION " (" TESSALY_BUILD ")");
}

} // namespace tessaly
