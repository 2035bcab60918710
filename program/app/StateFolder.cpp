#include "program/app/StateFolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace zorvane {
namespace {

QString UserFolder() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    // Toolkits of this age know no such place. A path that is not absolute is to be ignored.
    const QString said = qEnvironmentVariable("XDG_STATE_HOME");
    const QString states =
        QDir::isAbsolutePath(said) ? said : QDir::homePath() + QStringLiteral("/.local/state");
    return states + QStringLiteral("/zorvane");
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
}

}  // namespace

QString StateFolder(const QString& programFolder) {
    if (!QFile::exists(programFolder + QStringLiteral("/" ZORVANE_PER_USER))) return programFolder;
    const QString folder = UserFolder();
    QDir().mkpath(folder);  // where that fails, the property-bag window says that nothing is kept
    return folder;
}

}  // namespace zorvane
