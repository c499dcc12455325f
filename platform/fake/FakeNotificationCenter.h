#pragma once

#include "platform/NotificationCenter.h"

#include <QList>

namespace tessaly {

/// Remembers what was asked of it.
class FakeNotificationCenter final : public NotificationCenter
{
public:
    void requestAuthorization() override { ++m_authorizationCount; }
    void add(const NotificationRequest &request) override { m_requests.append(request); }

    [[nodiscard]] int authorizationCount() const { return m_authorizationCount; }
    [[nodiscard]] const QList<NotificationRequest> &requests() const { return m_requests; }

private:
    QList<NotificationRequest> m_requests;
    int m_authorizationCount = 0;
};

} // namespace tessaly
