#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

#include "program/app/SessionEnd.h"

namespace zorvane {
namespace {

std::array<int, 2> ends{-1, -1};

// Little may be called while a signal is handled; the rest is done where the other end is read.
void Noticed(int) {
    const int before = errno;
    const char any = 0;
    static_cast<void>(!::write(ends[1], &any, 1));
    errno = before;
}

}  // namespace

void CloseWindowsAtSessionEnd() {
    if (::pipe(ends.data()) != 0) return;
    for (const int end : ends) {  // pipe2 would do it in one step, where there is one
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, qApp);
    // Every loop that waits for a window ends, and so does any that begins after it: nobody is
    // asked anything, and each window is unloaded by whoever has shown it.
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::exit(0);
    });
    struct sigaction action {};
    action.sa_handler = Noticed;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);  // a second one ends it at once
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction found {};
        // One that is ignored already (nohup) stays so.
        if (::sigaction(signal, nullptr, &found) == 0 && found.sa_handler == SIG_IGN) continue;
        ::sigaction(signal, &action, nullptr);
    }
}

}  // namespace zorvane
