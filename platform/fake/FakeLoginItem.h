#pragma once

#include "platform/LoginItem.h"

#include <optional>
#include <utility>

namespace tessaly {

/// A login item in memory that can refuse changes.
class FakeLoginItem final : public LoginItem
{
public:
    [[nodiscard]] bool isEnabled() const override { return m_isEnabled; }
    [[nodiscard]] Result<void> setEnabled(bool isEnabled) override
    {
        if (m_failure)
            return *m_failure;
        m_isEnabled = isEnabled;
        return {};
    }

    void failWith(std::optional<Error> error) { m_failure = std::move(error); }

private:
    std::optional<Error> m_failure;
    bool m_isEnabled = false;
};

} // namespace tessaly
