#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>

#include "program/forms/FontRecord.h"

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setFont(zorvane::CompactFont());
    QApplication::setQuitOnLastWindowClosed(false);
    QAccessible::setActive(true);
    return RUN_ALL_TESTS();
}
