#include "program/app/StateFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace zorvane::test {
namespace {

TEST(StateFolder_PerUser, AnInstalledProgramWritesToItsUsersFolderAndNoOther) {
    const QTemporaryDir prefix;
    const QString program = prefix.filePath("bin");
    const QString states = prefix.filePath("states");
    ASSERT_TRUE(QDir().mkpath(program));
    qputenv("XDG_STATE_HOME", states.toUtf8());
    EXPECT_EQ(StateFolder(program), program) << "nobody has installed it for all";
    ASSERT_TRUE(QDir().mkpath(prefix.filePath("share/zorvane")));
    ASSERT_TRUE(QFile(prefix.filePath("share/zorvane/per-user")).open(QIODevice::WriteOnly));
    EXPECT_EQ(StateFolder(program), states + "/zorvane");
    EXPECT_TRUE(QDir(states + "/zorvane").exists());
    qputenv("XDG_STATE_HOME", "not absolute");
    qputenv("HOME", prefix.path().toUtf8());
    EXPECT_EQ(StateFolder(program), prefix.path() + "/.local/state/zorvane");
    qunsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace zorvane::test
