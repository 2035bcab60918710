#include "program/app/ProgramFolder.h"

#include <QCoreApplication>

namespace zorvane {

std::filesystem::path ProgramFolder() {
    // The toolkit's texts have no room for bytes that are no UTF-8, so it is asked last.
    std::error_code absent;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", absent);
    if (!absent) return self.parent_path();
    return QCoreApplication::applicationDirPath().toStdU16String();
}

}  // namespace zorvane
