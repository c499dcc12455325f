#include "tests/support/TestMain.h"
#include "tests/system/EdsDriver.h"

using namespace tessaly;

namespace {

class EdsContractTest : public EventStoreContract
{
    Q_OBJECT

protected:
    std::unique_ptr<EventStoreDriver> makeDriver() override { return std::make_unique<EdsDriver>(m_session); }

private:
    CalendarSession m_session;
};

} // namespace

TESSALY_TEST_MAIN(EdsContractTest)
#include "EdsContractTest.moc"
