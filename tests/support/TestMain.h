#pragma once

#include <QGuiApplication>
#include <QStandardPaths>
#include <QTest>

/// The main function of a test: fixed time zone, locale and hash seed, offscreen, test-mode paths.
#define TESSALY_TEST_MAIN(TestClass)                                                                                   \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        tessaly::fixTestEnvironment();                                                                                 \
        QGuiApplication application(argc, argv);                                                                       \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }

namespace tessaly {

/// Must run before the application object exists.
inline void fixTestEnvironment()
{
    qputenv("TZ", "Europe/Vienna");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_HASH_SEED", "0");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QStandardPaths::setTestModeEnabled(true);
}

} // namespace tessaly
