#include "tests/support/TestMain.h"
#include "tests/views/schedule/ScheduleViewFixture.h"

#include <QtQuickTest>

int main(int argc, char *argv[])
{
    tessaly::fixTestEnvironment();
    tessaly::ScheduleViewFixture fixture;
    return quick_test_main_with_setup(argc, argv, "ScheduleViewTest", QUICK_TEST_SOURCE_DIR, &fixture);
}
