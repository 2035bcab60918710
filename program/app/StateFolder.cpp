#include "program/app/StateFolder.h"

#include <QStandardPaths>
#include <QtGlobal>
#include <system_error>

namespace zorvane {
namespace {

namespace fs = std::filesystem;

fs::path UserFolder() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    // Toolkits of this age know no such place. A path that is not absolute is to be ignored.
    const fs::path said = qgetenv("XDG_STATE_HOME").toStdString();
    const fs::path home = qgetenv("HOME").toStdString();
    return (said.is_absolute() ? said : home / ".local/state") / "zorvane";
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation).toStdU16String();
#endif
}

}  // namespace

fs::path StateFolder(const fs::path& programFolder) {
    // Where something fails, the property-bag window says that nothing is kept.
    std::error_code ignored;
    if (!fs::exists(programFolder / ZORVANE_PER_USER, ignored)) return programFolder;
    const fs::path folder = UserFolder();
    fs::create_directories(folder, ignored);
    return folder;
}

}  // namespace zorvane
