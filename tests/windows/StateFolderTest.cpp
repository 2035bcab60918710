#include "program/app/StateFolder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <filesystem>

namespace zorvane::test {
namespace {

TEST(StateFolder_PerUser, AnInstalledProgramWritesToItsUsersFolderAndNoOther) {
    const QTemporaryDir prefix;
    const std::filesystem::path folder = prefix.path().toStdString();
    const std::filesystem::path program = folder / "bin";
    const std::filesystem::path states = folder / "states\xFF";  // no valid text
    ASSERT_TRUE(std::filesystem::create_directory(program));
    qputenv("XDG_STATE_HOME", states.c_str());
    EXPECT_EQ(StateFolder(program), program) << "nobody has installed it for all";
    ASSERT_TRUE(std::filesystem::create_directories(folder / "share/zorvane"));
    ASSERT_TRUE(QFile(prefix.filePath("share/zorvane/per-user")).open(QIODevice::WriteOnly));
    EXPECT_EQ(StateFolder(program), states / "zorvane");
    EXPECT_TRUE(std::filesystem::exists(states / "zorvane"));
    qputenv("XDG_STATE_HOME", "not absolute");
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", prefix.path().toUtf8());
    EXPECT_EQ(StateFolder(program), folder / ".local/state/zorvane");
    qputenv("HOME", home);
    qunsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace zorvane::test
