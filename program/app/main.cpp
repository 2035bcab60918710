#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "program/app/CommandLine.h"
#include "program/app/Logo.h"
#include "program/app/SessionEnd.h"
#include "program/app/Version.h"
#include "program/app/modStartUp.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Guard.h"
#include "program/forms/HouseStyle.h"
#include "program/forms/Strings.h"

namespace {

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

// Without a display the toolkit ends the process with a core dump.
bool HasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

}  // namespace

int main(int argc, char* argv[]) {
    const zorvane::CommandLine asked = zorvane::ReadCommandLine(argc, argv);
    if (asked.End) return *asked.End;
    if (!asked.NamesPlatform && !HasDisplay()) {
        std::fputs("zorvane: there is no display here to show its windows on.\n", stderr);
        return 1;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zorvane"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(zorvane::ToQString(zorvane::ProgramVersion()));
    QApplication::setDesktopFileName(QStringLiteral("zorvane"));
    QApplication::setWindowIcon(zorvane::LogoIcon());
    QApplication::setStyle(new zorvane::HouseStyle(QApplication::style()->objectName()));
    QApplication::setFont(zorvane::CompactFont());
    // The modal shows end by themselves; a quit in between would end the next one at once.
    QApplication::setQuitOnLastWindowClosed(false);
    zorvane::CloseWindowsAtSessionEnd();
    zorvane::RunGuarded(nullptr, [] { zorvane::modStartUp::Main(); });
    QCoreApplication::sendPostedEvents();  // windows that have just been unloaded go now
    return 0;
}
